# upkeep_windows_program(<target> "<description>"): gives a program a version
# resource (file and product version from project(), so the version is written
# nowhere else), the application manifest in windows/upkeep.manifest, and the
# hardening and reproducibility link options.
# Only the MinGW build compiles resources; elsewhere this does nothing.
if(MINGW)
  enable_language(RC)
endif()

set(UPKEEP_WINDOWS_DIR ${CMAKE_CURRENT_LIST_DIR}/windows)

function(upkeep_windows_program target description)
  if(NOT MINGW)
    return()
  endif()
  # The fixed part of a version resource holds four numbers: 1.1 is 1,1,0,0.
  set(numbers)
  foreach(part MAJOR MINOR PATCH TWEAK)
    if("${PROJECT_VERSION_${part}}" STREQUAL "")
      list(APPEND numbers 0)
    else()
      list(APPEND numbers ${PROJECT_VERSION_${part}})
    endif()
  endforeach()
  list(JOIN numbers "," UPKEEP_VERSION_NUMBERS)
  set(UPKEEP_VERSION ${PROJECT_VERSION})
  set(UPKEEP_DESCRIPTION "${description}")
  get_target_property(output_name ${target} OUTPUT_NAME)
  if(NOT output_name)
    set(output_name ${target})
  endif()
  set(UPKEEP_FILE_NAME ${output_name}${CMAKE_EXECUTABLE_SUFFIX})
  set(UPKEEP_MANIFEST ${UPKEEP_WINDOWS_DIR}/upkeep.manifest)

  # ASLR with high entropy and DEP, stated rather than left to the linker's
  # defaults; no link time in the header, so two builds give the same bytes.
  target_link_options(${target} PRIVATE
    -Wl,--dynamicbase,--high-entropy-va,--nxcompat -Wl,--no-insert-timestamp)

  set(rc ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  configure_file(${UPKEEP_WINDOWS_DIR}/program.rc.in ${rc} @ONLY)
  target_sources(${target} PRIVATE ${rc})
  # windres does not report the manifest as a dependency of the resource.
  set_source_files_properties(${rc} PROPERTIES OBJECT_DEPENDS ${UPKEEP_MANIFEST})
endfunction()
