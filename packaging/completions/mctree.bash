# SPDX-License-Identifier: Apache-2.0
# Completion of mctree for bash. Paths are those of the server that the line names.

_mctree_paths() {
    local current=$1 path
    shift
    while IFS= read -r path; do
        [[ $path == "$current"* ]] && COMPREPLY+=("$(printf %q "$path")")
    done < <(mctree "$@" --no-retry --timeout 1000 --literal ls "${current%/*}/" 2>/dev/null)
    # A node may be gone into.
    [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == */ ]] && compopt -o nospace 2>/dev/null
}

_mctree() {
    # The line itself, since bash takes addresses apart at their colons.
    local line=${COMP_LINE:0:COMP_POINT}
    local words=() server=() command= current previous i
    read -ra words <<< "$line"
    [[ $line == *[[:blank:]] ]] && words+=("")
    current=${words[-1]}
    previous=${words[-2]}
    COMPREPLY=()

    for ((i = 1; i < ${#words[@]} - 1; ++i)); do
        case ${words[i]} in
            --connect|-s|--server|--profiles|--ca|--cert|--key|--user|--token|--token-file)
                server+=("${words[i]}" "${words[i + 1]}")
                ((++i)) ;;
            --tls) server+=("${words[i]}") ;;
            --timeout|--wait|-f|--file|--count) ((++i)) ;;
            -*) ;;
            *) command=${command:-${words[i]}} ;;
        esac
    done

    case $previous in
        --profiles|--ca|--cert|--key|--token-file|-f|--file)
            COMPREPLY=($(compgen -f -- "$current")); return ;;
        -s|--server)
            local profiles=${MCTREE_PROFILES:-${XDG_CONFIG_HOME:-$HOME/.config}/MultiChannelServer/mctree.profiles}
            COMPREPLY=($(compgen -W "$(sed -n 's/^\[\(.*\)\] *$/\1/p' "$profiles" 2>/dev/null)" -- "$current"))
            return ;;
        --wait)
            COMPREPLY=($(compgen -W "exists" -- "$current")); return ;;
        --connect|--user|--token|--timeout|--count) return ;;
    esac

    if [[ $current == -* ]]; then
        local options="--connect -s --server --profiles --tls --ca --cert --key --user --token --token-file
            --timeout --no-retry --json --literal -h --help -V --version"
        case $command in
            ls) options+=" -r --recursive" ;;
            get) options+=" --wait" ;;
            set) options+=" -f --file" ;;
            watch) options+=" --count --changes-only" ;;
            events) options+=" --count --follow" ;;
        esac
        COMPREPLY=($(compgen -W "$options" -- "$current"))
    elif [[ -z $command || $command == help ]]; then
        COMPREPLY=($(compgen -W "ls get set watch hold info events stations help" -- "$current"))
    elif [[ $current == /* && $command != info && $command != events && $command != stations ]]; then
        _mctree_paths "$current" "${server[@]}"
    fi
}

complete -F _mctree mctree
