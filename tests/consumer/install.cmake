# Installs the build tree BUILD to a PREFIX that holds nothing else.
file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX} COMMAND_ERROR_IS_FATAL ANY)
