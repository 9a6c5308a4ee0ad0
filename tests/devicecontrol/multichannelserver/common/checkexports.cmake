# cmake -DNM=<nm> -DLIBRARY=<file> -P checkexports.cmake: fails unless the file exports the entries of the module
# by the names that the application framework looks for.
execute_process(COMMAND ${NM} -D --defined-only ${LIBRARY} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
foreach(entry ARCreateEx ARDestroy)
  if(NOT symbols MATCHES " T ${entry}\n")
    message(FATAL_ERROR "${LIBRARY} does not export ${entry}")
  endif()
endforeach()
