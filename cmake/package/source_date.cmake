# upkeep_source_date(<var>): the moment a reproducible release carries, in
# seconds since 1970: SOURCE_DATE_EPOCH when the environment sets it, else the
# time of the commit the sources are at (CPACK_UPKEEP_SOURCE_DIR), else the
# start of 1980.
function(upkeep_source_date var)
  set(epoch "$ENV{SOURCE_DATE_EPOCH}")
  if(epoch STREQUAL "")
    execute_process(COMMAND git -C "${CPACK_UPKEEP_SOURCE_DIR}" log -1 --format=%ct
      OUTPUT_VARIABLE epoch OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE failed)
    if(failed OR NOT epoch MATCHES "^[0-9]+$")
      # Sources outside a checkout: the earliest time a zip entry can carry.
      message(STATUS "Upkeep: no commit time and no SOURCE_DATE_EPOCH: the release is dated 1980-01-01")
      set(epoch 315532800)
    endif()
  endif()
  set(${var} ${epoch} PARENT_SCOPE)
endfunction()
