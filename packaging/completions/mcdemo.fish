# SPDX-License-Identifier: Apache-2.0
# Completion of mcdemo for fish, made from its --help by make.py.

complete -c mcdemo -f
complete -c mcdemo -s h -l help -d 'Displays help on commandline options'
complete -c mcdemo -l help-all -d 'Displays help including Qt specific options'
complete -c mcdemo -s v -l version -d 'Displays version information'
complete -c mcdemo -l pictures -x -a '(__fish_complete_directories)' -d 'Where pictures of the windows are saved if there is no display'
complete -c mcdemo -l nats -rF -d 'Bring the clients through a cluster of NATS, which the program deploy/nats/make-cluster sets up, and kill one of its nodes'
