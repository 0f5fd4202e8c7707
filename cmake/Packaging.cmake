# The release archive. `cmake --build --preset mingw --target package` writes
# build/upkeep-<version>-win64.zip with no top-level directory: unpacked into a
# folder, that folder holds the three programs (stripped), upkeep.xsd, README.md,
# docs/reference.md and examples/. Only the MinGW build makes it.
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
  include(CPack)
endif()
