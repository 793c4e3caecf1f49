include(GenerateExportHeader)
include(KdInstall)

# Takes the sources of other platforms out of the list: <Name>_win.cpp is for Windows, <Name>_other.cpp for the rest.
function(kd_keep_platform_sources list_name)
  if(WIN32)
    list(FILTER ${list_name} EXCLUDE REGEX "_other\\.cpp$")
  else()
    list(FILTER ${list_name} EXCLUDE REGEX "_win\\.cpp$")
  endif()
  set(${list_name} ${${list_name}} PARENT_SCOPE)
endfunction()

# CMake 3.25 does not look again for classes that need moc when a glob has found a new header, and what depends on
# that header then fails to link after a pull. Without its time stamp moc is run anew.
function(kd_watch_sources target)
  get_target_property(sources ${target} SOURCES)
  if(NOT "${sources}" STREQUAL "${KDRECORD_SOURCES_OF_${target}}")
    file(REMOVE ${CMAKE_CURRENT_BINARY_DIR}/${target}_autogen/timestamp)
    set(KDRECORD_SOURCES_OF_${target} "${sources}" CACHE INTERNAL "Sources of ${target} when it was last configured")
  endif()
endfunction()

# kd_add_library(NAME SOURCES ... [LINKS public targets ...] [PRIVATE_LINKS targets ...] INCLUDE_ROOT dir)
# A shared library <NAME> with the alias KdRecord::<NAME>, its export header <NAME>/<NAME>Export.h and
# INCLUDE_ROOT as the folder below which its headers are found as <NAME/Header.h>.
function(kd_add_library name)
  cmake_parse_arguments(ARG "" "INCLUDE_ROOT" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  kd_keep_platform_sources(ARG_SOURCES)
  add_library(${name} SHARED ${ARG_SOURCES})
  add_library(KdRecord::${name} ALIAS ${name})
  kd_configure_library(${name} EXPORT_BASE ${name} INCLUDE_ROOT ${ARG_INCLUDE_ROOT}
    LINKS ${ARG_LINKS} PRIVATE_LINKS ${ARG_PRIVATE_LINKS})
  if(WIN32)
    # Found by its file's name, which is to be the same whatever compiler made it.
    set_target_properties(${name} PROPERTIES PREFIX "")
  endif()
  set_target_properties(${name} PROPERTIES
    LINKER_LANGUAGE CXX VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  kd_install_library(${name} LINKS ${ARG_LINKS} PRIVATE_LINKS ${ARG_PRIVATE_LINKS})
endfunction()

# What a library's shared form and its form for the unit tests have in common.
function(kd_configure_library target)
  cmake_parse_arguments(ARG "" "EXPORT_BASE;INCLUDE_ROOT" "LINKS;PRIVATE_LINKS" ${ARGN})
  set(generated ${PROJECT_BINARY_DIR}/generated)
  generate_export_header(${target} BASE_NAME ${ARG_EXPORT_BASE}
    EXPORT_FILE_NAME ${generated}/${ARG_EXPORT_BASE}/${ARG_EXPORT_BASE}Export.h)
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${ARG_INCLUDE_ROOT}> $<BUILD_INTERFACE:${generated}>
    $<INSTALL_INTERFACE:${KDRECORD_INSTALL_INCLUDEDIR}>)
  target_link_libraries(${target} PUBLIC ${ARG_LINKS} PRIVATE ${ARG_PRIVATE_LINKS} kd_flags)
  kd_watch_sources(${target})
endfunction()

# kd_add_archive(NAME SOURCES ... LINKS public targets ...): a static library of the host's, to be linked into others.
function(kd_add_archive name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  kd_keep_platform_sources(ARG_SOURCES)
  add_library(${name} STATIC ${ARG_SOURCES})
  add_library(KdRecord::${name} ALIAS ${name})
  target_include_directories(${name} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/Host> $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/generated>
    $<INSTALL_INTERFACE:${KDRECORD_INSTALL_INCLUDEDIR}>)
  target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE $<BUILD_INTERFACE:kd_flags>)
  kd_watch_sources(${name})
  kd_install_library(${name} LINKS ${ARG_LINKS})
endfunction()
