# Read by cpack before it stages anything: the release's source date goes into
# the environment, where strip (binutils) takes it for the programs' PE
# timestamps instead of the time of the run.
include(${CMAKE_CURRENT_LIST_DIR}/source_date.cmake)
upkeep_source_date(epoch)
set(ENV{SOURCE_DATE_EPOCH} ${epoch})
