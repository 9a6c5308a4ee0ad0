# SPDX-License-Identifier: Apache-2.0
# Completion of dimodule for bash, made from its --help by make.py.

_dimodule() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    case $previous in
        --listen|--modules|--inputs|--start|--unit|--seed) return ;;
        --pattern) COMPREPLY=($(compgen -W "walk blink random" -- "$current")); return ;;
        --script) COMPREPLY=($(compgen -f -- "$current")); return ;;
        --fault) COMPREPLY=($(compgen -W "none delay reset refused silence half transaction function length garbage exception duplicate idle storm" -- "$current")); return ;;
    esac
    COMPREPLY=($(compgen -W "-h --help --help-all -v --version --listen --modules --inputs --start --unit --pattern --script --fault --seed" -- "$current"))
}

complete -F _dimodule dimodule
