# SPDX-License-Identifier: Apache-2.0
# Completion of mcconsole for bash, made from its --help by make.py.

_mcconsole() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    case $previous in
        --connect|--user|--token|--name) return ;;
        --ca|--cert|--key|--config) COMPREPLY=($(compgen -f -- "$current")); return ;;
        --locale) COMPREPLY=($(compgen -W "de en" -- "$current")); return ;;
        --screenshot) COMPREPLY=($(compgen -d -- "$current")); return ;;
    esac
    COMPREPLY=($(compgen -W "-h --help --help-all -v --version --connect --tls --ca --cert --key --user --token --name --config --locale --dark --screenshot" -- "$current"))
}

complete -F _mcconsole mcconsole
