# Installs what a host's engineer gets, anew: cmake -DBUILD=dir -DPREFIX=dir -P install.cmake
file(REMOVE_RECURSE ${PREFIX})
foreach(component Runtime Development)
  execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX} --component ${component}
    COMMAND_ERROR_IS_FATAL ANY)
endforeach()
