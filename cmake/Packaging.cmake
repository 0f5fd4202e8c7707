# The release archive. `cmake --build --preset mingw --target package` writes
# build/upkeep-<version>-win64.zip with no top-level directory: unpacked into a
# folder, that folder holds the three programs (stripped), upkeep.xsd, README.md,
# docs/reference.md and examples/. Only the MinGW build makes it.
# With UPKEEP_SIGN_PFX and UPKEEP_SIGN_PASSWORD in the environment the programs
# are signed (cmake/package/sign.cmake). The archive holds the same bytes for
# every build of one commit, and SHA256SUMS beside it holds its checksum
# (cmake/package/archive.cmake).
if(MINGW)
  install(TARGETS upkeep upkeep-password upkeep-check RUNTIME DESTINATION .)
  install(FILES README.md upkeep.xsd DESTINATION .)
  install(FILES docs/reference.md DESTINATION docs)
  install(DIRECTORY examples/ DESTINATION examples)

  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_NAME upkeep)
  set(CPACK_PACKAGE_VENDOR Upkeep)
  set(CPACK_PACKAGE_FILE_NAME upkeep-${PROJECT_VERSION}-win64)
  set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
  set(CPACK_STRIP_FILES ON)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  set(CPACK_UPKEEP_PYTHON ${Python3_EXECUTABLE})
  set(CPACK_UPKEEP_SOURCE_DIR ${PROJECT_SOURCE_DIR})
  set(CPACK_UPKEEP_PROGRAMS upkeep.exe upkeep-password.exe upkeep-check.exe)
  set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_LIST_DIR}/package/config.cmake)
  set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/package/sign.cmake)
  set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/package/archive.cmake)
  include(CPack)
endif()
