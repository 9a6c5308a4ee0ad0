# SPDX-License-Identifier: Apache-2.0
# Completion of dimodule for fish, made from its --help by make.py.

complete -c dimodule -f
complete -c dimodule -s h -l help -d 'Displays help on commandline options'
complete -c dimodule -l help-all -d 'Displays help including Qt specific options'
complete -c dimodule -s v -l version -d 'Displays version information'
complete -c dimodule -l listen -x -d 'Where a module is, an address of this machine only'
complete -c dimodule -l modules -x -d 'So many modules at each of these, at one address after the other'
complete -c dimodule -l inputs -x -d 'Inputs of each module, 1 to 32'
complete -c dimodule -l start -x -d 'Modbus address of the first input'
complete -c dimodule -l unit -x -d 'The only Modbus unit that answers'
complete -c dimodule -l pattern -x -a 'walk blink random' -d 'Key inputs by itself, every MS'
complete -c dimodule -l script -rF -d 'Carry out the commands in FILE, one line each'
complete -c dimodule -l fault -x -a 'none delay reset refused silence half transaction function length garbage exception duplicate idle storm' -d 'Start with this fault, such as \'delay 300 x5\''
complete -c dimodule -l seed -x -d 'What random faults and patterns start from'
