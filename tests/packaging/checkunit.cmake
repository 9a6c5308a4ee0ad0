# Installs the unit of the build tree BUILD to PREFIX, and has systemd judge it.
set(most_exposure 19)  # tenths: below 2

file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX} --component service
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
set(unit ${PREFIX}/lib/systemd/system/mcserver.service)
file(READ ${unit} text)
foreach(line "ExecStart=${PREFIX}/bin/mcserver --headless" "WatchdogSec=" "LimitNOFILE=" "MemoryMax=" "UMask=0077"
    "LoadCredential=tls-key:")
  string(FIND "${text}" "\n${line}" place)
  if(place EQUAL -1)
    message(SEND_ERROR "${unit} lacks a line that begins with '${line}'")
  endif()
endforeach()
if(text MATCHES "@")
  string(REGEX REPLACE "SystemCallFilter=[^\n]*" "" rest "${text}")
  if(rest MATCHES "@")
    message(SEND_ERROR "${unit} has something left to be replaced")
  endif()
endif()

# It is started by name in what systemd looks at, so that the program has to be there.
file(MAKE_DIRECTORY ${PREFIX}/bin)
file(CREATE_LINK /bin/true ${PREFIX}/bin/mcserver SYMBOLIC)
execute_process(COMMAND systemd-analyze verify ${unit}
  OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE code)
# What the machine lacks, such as a list of the kernel's calls, is a comment.
string(REGEX REPLACE "#[^\n]*\n" "" output "${output}")
if(NOT code EQUAL 0 OR output MATCHES "mcserver\\.service")
  message(SEND_ERROR "systemd finds fault with ${unit}: ${output}")
endif()
execute_process(COMMAND systemd-analyze security --offline=true --threshold=${most_exposure} ${unit}
  OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE code)
if(NOT code EQUAL 0)
  message(SEND_ERROR "${unit} may do too much: ${output}")
endif()
