# Runs after CPack has made the archive: makes it again from the staged files so
# that two builds of one commit give the same bytes (sorted entries, the
# release's source date as every time), and writes SHA256SUMS beside it.
include(${CMAKE_CURRENT_LIST_DIR}/source_date.cmake)

upkeep_source_date(epoch)
execute_process(
  COMMAND "${CPACK_UPKEEP_PYTHON}" "${CMAKE_CURRENT_LIST_DIR}/zip_tree.py"
    "${CPACK_TEMPORARY_DIRECTORY}" "${CPACK_PACKAGE_FILES}" ${epoch}
  RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "Upkeep: rewriting ${CPACK_PACKAGE_FILES} failed")
endif()
file(SHA256 "${CPACK_PACKAGE_FILES}" hash)
file(WRITE "${CPACK_PACKAGE_DIRECTORY}/SHA256SUMS" "${hash}  ${CPACK_OUTPUT_FILE_NAME}\n")
