# Debian packages, by CPack: what runs, what a host is built with, and the reference editor.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The KdRecord developers <kdrecord@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_COMPONENTS_ALL Runtime Development Studio)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(runtime libkdrecord${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime})
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "Dialogs that record a voice-over or a webcam clip for the project that is
open in an editor, with the capture engine and the libraries that they need.")
# Loaded by name while it runs, so that no tool can see them in the libraries.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "gstreamer1.0-plugins-base, gstreamer1.0-plugins-good, \
gstreamer1.0-plugins-bad, gstreamer1.0-libav, gstreamer1.0-pulseaudio, gstreamer1.0-pipewire, opencv-data")
# Of many packages that are installed at once the last one has the cache of libraries made.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkdrecord-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "What is needed to build an editor with the dialogs of ${runtime}, or a
capture engine for them.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime} (= ${PROJECT_VERSION}), qtbase5-dev (>= 5.15)")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)

set(CPACK_DEBIAN_STUDIO_PACKAGE_NAME kdrecord-studio)
set(CPACK_DEBIAN_STUDIO_PACKAGE_SECTION video)
set(CPACK_DEBIAN_STUDIO_DESCRIPTION "A small editor around the recording dialogs of ${runtime}: it lists takes
and plays them.")
set(CPACK_DEBIAN_STUDIO_PACKAGE_DEPENDS "${runtime} (= ${PROJECT_VERSION})")
# A session's own sound server, and for a demonstration what makes a microphone and speaks into it.
set(CPACK_DEBIAN_STUDIO_PACKAGE_RECOMMENDS "pipewire, pipewire-bin, pipewire-pulse, wireplumber, pulseaudio-utils, espeak-ng")

# kd_install_compressed(FILE NAME FOLDER COMPONENT): the file as FOLDER/NAME.gz, the same on every machine.
function(kd_install_compressed file name folder component)
  set(output ${PROJECT_BINARY_DIR}/packaging/${component}/${name}.gz)
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/packaging/${component})
  execute_process(COMMAND gzip -9nc ${file} OUTPUT_FILE ${output} COMMAND_ERROR_IS_FATAL ANY)
  install(FILES ${output} DESTINATION ${folder} COMPONENT ${component})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
endfunction()

# kd_install_papers(COMPONENT PACKAGE): what each package has to say about itself.
function(kd_install_papers component package)
  set(papers ${PROJECT_SOURCE_DIR}/packaging)
  set(folder ${CMAKE_INSTALL_DATADIR}/doc/${package})
  install(FILES ${papers}/copyright DESTINATION ${folder} COMPONENT ${component})
  kd_install_compressed(${papers}/changelog changelog ${folder} ${component})
  if(EXISTS ${papers}/${package}.lintian-overrides)
    install(FILES ${papers}/${package}.lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
      RENAME ${package} COMPONENT ${component})
  endif()
endfunction()

# Only what goes to /usr is a package.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  kd_install_papers(Runtime ${runtime})
  kd_install_papers(Development libkdrecord-dev)
  kd_install_papers(Studio kdrecord-studio)
  foreach(program studio kd_virtual_camera)
    kd_install_compressed(${PROJECT_SOURCE_DIR}/packaging/${program}.1 ${program}.1 ${CMAKE_INSTALL_MANDIR}/man1 Studio)
  endforeach()
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/studio.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications
    RENAME kdrecord-studio.desktop COMPONENT Studio)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/kdrecord-studio.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT Studio)
endif()

include(CPack)
