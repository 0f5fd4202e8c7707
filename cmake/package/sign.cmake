# Runs after CPack has staged the files and before it archives them: signs the
# programs with the organisation's certificate (a PKCS#12 file) when
# UPKEEP_SIGN_PFX and UPKEEP_SIGN_PASSWORD are set; UPKEEP_SIGN_TIMESTAMP, a
# timestamp service's URL, keeps the signatures valid after the certificate
# expires. Without a timestamp the signing time is the release's source date,
# so a signed release is reproducible too.
include(${CMAKE_CURRENT_LIST_DIR}/source_date.cmake)

if("$ENV{UPKEEP_SIGN_PFX}" STREQUAL "" OR NOT DEFINED ENV{UPKEEP_SIGN_PASSWORD})
  message(STATUS "Upkeep: UPKEEP_SIGN_PFX and UPKEEP_SIGN_PASSWORD are not set: the programs are not signed")
  return()
endif()
find_program(OSSLSIGNCODE osslsigncode)
if(NOT OSSLSIGNCODE)
  message(FATAL_ERROR "Upkeep: signing needs osslsigncode (Debian package osslsigncode)")
endif()

# The password goes through a file only its owner reads, not the command line.
set(password_file "${CPACK_TOPLEVEL_DIRECTORY}/sign-password")
file(TOUCH "${password_file}")
file(CHMOD "${password_file}" PERMISSIONS OWNER_READ OWNER_WRITE)
file(WRITE "${password_file}" "$ENV{UPKEEP_SIGN_PASSWORD}")

if("$ENV{UPKEEP_SIGN_TIMESTAMP}" STREQUAL "")
  upkeep_source_date(epoch)
  set(when -time ${epoch})
else()
  set(when -ts "$ENV{UPKEEP_SIGN_TIMESTAMP}")
endif()
foreach(program IN LISTS CPACK_UPKEEP_PROGRAMS)
  set(file "${CPACK_TEMPORARY_DIRECTORY}/${program}")
  execute_process(
    COMMAND ${OSSLSIGNCODE} sign -pkcs12 "$ENV{UPKEEP_SIGN_PFX}" -readpass "${password_file}" -h sha256
      -n "${CPACK_PACKAGE_NAME}" ${when} -in "${file}" -out "${file}.signed"
    RESULT_VARIABLE failed OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(failed)
    file(REMOVE "${password_file}" "${file}.signed")
    message(FATAL_ERROR "Upkeep: signing ${program} failed:\n${output}")
  endif()
  file(RENAME "${file}.signed" "${file}")
  message(STATUS "Upkeep: signed ${program}")
endforeach()
file(REMOVE "${password_file}")
