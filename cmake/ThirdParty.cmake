# Dependencies, all from Debian packages (installed by scripts/setup.sh).

set(TINYXML_DIR ${PROJECT_SOURCE_DIR}/third_party/tinyxml)
if(NOT EXISTS ${TINYXML_DIR}/.patches-sha256)
  message(FATAL_ERROR "TinyXML sources are missing: run scripts/setup.sh")
endif()
file(GLOB _tinyxml_patches ${PROJECT_SOURCE_DIR}/patches/tinyxml/*.patch)
set(_patch_text "")
foreach(p IN LISTS _tinyxml_patches)
  file(READ ${p} _one)
  string(APPEND _patch_text "${_one}")
endforeach()
string(SHA256 _want "${_patch_text}")
file(READ ${TINYXML_DIR}/.patches-sha256 _have)
string(STRIP "${_have}" _have)
if(NOT _want STREQUAL _have)
  message(FATAL_ERROR "TinyXML patches changed: run scripts/setup.sh")
endif()
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
  ${TINYXML_DIR}/.patches-sha256 ${_tinyxml_patches})

add_library(tinyxml STATIC
  ${TINYXML_DIR}/tinyxml.cpp ${TINYXML_DIR}/tinyxmlerror.cpp
  ${TINYXML_DIR}/tinyxmlparser.cpp ${TINYXML_DIR}/tinystr.cpp)
target_compile_definitions(tinyxml PUBLIC TIXML_USE_STL)
target_include_directories(tinyxml SYSTEM PUBLIC ${TINYXML_DIR})
target_compile_options(tinyxml PRIVATE -w)

# picojson and Boost are header-only. The host's /usr/include must not reach the
# MinGW compiler, so only these headers are exposed through a directory of links.
set(HOST_HEADERS ${CMAKE_BINARY_DIR}/host-headers)
file(MAKE_DIRECTORY ${HOST_HEADERS})
file(CREATE_LINK /usr/include/picojson.h ${HOST_HEADERS}/picojson.h SYMBOLIC)
file(CREATE_LINK /usr/include/boost ${HOST_HEADERS}/boost SYMBOLIC)

add_library(picojson INTERFACE)
target_include_directories(picojson SYSTEM INTERFACE ${HOST_HEADERS})

add_library(boost_regex INTERFACE)
target_include_directories(boost_regex SYSTEM INTERFACE ${HOST_HEADERS})
# Identical in every translation unit: these bound backtracking so a pathological
# pattern ends as "no match" instead of hanging.
target_compile_definitions(boost_regex INTERFACE
  BOOST_REGEX_MAX_STATE_COUNT=10000000 BOOST_REGEX_MAX_BLOCKS=4096)

if(BUILD_TESTING)
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/_deps/googletest EXCLUDE_FROM_ALL SYSTEM)
endif()
