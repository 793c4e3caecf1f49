# What `cmake --install` puts where. The libraries go out one by one, each with a CMake target and a pkg-config file of
# its own, so that a host can replace any of them by one of its own.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# The names of the host libraries are short: below /usr/include they get a folder of their own.
set(KDRECORD_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/kdrecord-${PROJECT_VERSION_MAJOR})
set(KDRECORD_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/KdRecord)
set(KDRECORD_INSTALL_PKGCONFIGDIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# Below /usr the loader finds the libraries by itself; anywhere else they find each other, wherever the folder is moved.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  set(CMAKE_INSTALL_RPATH "")
else()
  set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
endif()

# kd_install_library(TARGET LINKS public targets ... [PRIVATE_LINKS targets ...])
function(kd_install_library target)
  cmake_parse_arguments(ARG "" "" "LINKS;PRIVATE_LINKS" ${ARGN})
  install(TARGETS ${target} EXPORT ${target}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)
  install(EXPORT ${target} FILE KdRecord-${target}.cmake NAMESPACE KdRecord::
    DESTINATION ${KDRECORD_INSTALL_CMAKEDIR} COMPONENT Development)
  kd_install_pkgconfig(${target} LINKS ${ARG_LINKS})
  # The linker looks for the private ones of ours as well.
  get_property(libraries GLOBAL PROPERTY KDRECORD_INSTALLED_LIBRARIES)
  foreach(library IN LISTS ARG_PRIVATE_LINKS)
    if(library IN_LIST libraries)
      list(APPEND ARG_LINKS ${library})
    endif()
  endforeach()
  set_property(GLOBAL APPEND PROPERTY KDRECORD_INSTALLED_LIBRARIES ${target})
  set_property(GLOBAL PROPERTY KDRECORD_NEEDS_OF_${target} ${ARG_LINKS})
endfunction()

# Writes NAME.pc. Its folders are relative to itself, as CMake's are.
function(kd_install_pkgconfig target)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  list(TRANSFORM ARG_LINKS REPLACE "^Qt5::" "Qt5")
  list(JOIN ARG_LINKS ", " PC_REQUIRES)
  set(PC_NAME ${target})
  get_target_property(type ${target} TYPE)
  set(PC_LIBS)
  if(NOT type STREQUAL "INTERFACE_LIBRARY")
    set(PC_LIBS "-L\${libdir} -l${target}")
  endif()
  file(RELATIVE_PATH PC_PREFIX /${KDRECORD_INSTALL_PKGCONFIGDIR} /)
  string(REGEX REPLACE "/$" "" PC_PREFIX ${PC_PREFIX})
  configure_file(${PROJECT_SOURCE_DIR}/cmake/KdRecord.pc.in ${PROJECT_BINARY_DIR}/pkgconfig/${target}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/pkgconfig/${target}.pc
    DESTINATION ${KDRECORD_INSTALL_PKGCONFIGDIR} COMPONENT Development)
endfunction()

# kd_install_headers(library/Header.h ...): each by the name that it is included by.
function(kd_install_headers)
  foreach(header IN LISTS ARGN)
    get_filename_component(library ${header} DIRECTORY)
    kd_header_path(path ${header})
    install(FILES ${path} DESTINATION ${KDRECORD_INSTALL_INCLUDEDIR}/${library} COMPONENT Development)
  endforeach()
  get_property(libraries GLOBAL PROPERTY KDRECORD_INSTALLED_LIBRARIES)
  foreach(library IN LISTS libraries)
    set(export_header ${PROJECT_BINARY_DIR}/generated/${library}/${library}Export.h)
    if(EXISTS ${export_header})
      install(FILES ${export_header} DESTINATION ${KDRECORD_INSTALL_INCLUDEDIR}/${library} COMPONENT Development)
    endif()
  endforeach()
endfunction()

# The files that find_package(KdRecord) reads; after all libraries.
function(kd_install_package_config)
  get_property(libraries GLOBAL PROPERTY KDRECORD_INSTALLED_LIBRARIES)
  set(KDRECORD_COMPONENTS ${libraries})
  set(KDRECORD_COMPONENT_NEEDS)
  foreach(library IN LISTS libraries)
    get_property(needs GLOBAL PROPERTY KDRECORD_NEEDS_OF_${library})
    string(APPEND KDRECORD_COMPONENT_NEEDS "set(_KdRecord_needs_of_${library} ${needs})\n")
  endforeach()
  configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/KdRecordConfig.cmake.in
    ${PROJECT_BINARY_DIR}/KdRecordConfig.cmake INSTALL_DESTINATION ${KDRECORD_INSTALL_CMAKEDIR})
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/KdRecordConfigVersion.cmake COMPATIBILITY SameMajorVersion)
  install(FILES ${PROJECT_BINARY_DIR}/KdRecordConfig.cmake ${PROJECT_BINARY_DIR}/KdRecordConfigVersion.cmake
    DESTINATION ${KDRECORD_INSTALL_CMAKEDIR} COMPONENT Development)
endfunction()
