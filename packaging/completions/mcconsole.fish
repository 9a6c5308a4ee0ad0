# SPDX-License-Identifier: Apache-2.0
# Completion of mcconsole for fish, made from its --help by make.py.

complete -c mcconsole -f
complete -c mcconsole -s h -l help -d 'Displays help on commandline options'
complete -c mcconsole -l help-all -d 'Displays help including Qt specific options'
complete -c mcconsole -s v -l version -d 'Displays version information'
complete -c mcconsole -l connect -x -d 'Connect to this server'
complete -c mcconsole -l tls -d 'Connect with TLS'
complete -c mcconsole -l ca -rF -d 'Authority that the server\'s certificate must come from, PEM'
complete -c mcconsole -l cert -rF -d 'Certificate of this client, PEM'
complete -c mcconsole -l key -rF -d 'Private key of that certificate, PEM'
complete -c mcconsole -l user -x -d 'Whose token is given'
complete -c mcconsole -l token -x -d 'The token'
complete -c mcconsole -l name -x -d 'What the MpxORV of this console is called'
complete -c mcconsole -l config -rF -d 'Configuration to read and save'
complete -c mcconsole -l locale -x -a 'de en' -d 'Language of the texts, such as de or en'
complete -c mcconsole -l dark -d 'Show dark colours'
complete -c mcconsole -l screenshot -x -a '(__fish_complete_directories)' -d 'Save a picture of every page below DIRECTORY, and end'
