# SPDX-License-Identifier: Apache-2.0
# Completion of mcdemo for bash, made from its --help by make.py.

_mcdemo() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    case $previous in
        --pictures) COMPREPLY=($(compgen -d -- "$current")); return ;;
        --nats) COMPREPLY=($(compgen -f -- "$current")); return ;;
    esac
    COMPREPLY=($(compgen -W "-h --help --help-all -v --version --pictures --nats" -- "$current"))
}

complete -F _mcdemo mcdemo
