# SPDX-License-Identifier: Apache-2.0
# Completion of mctree for fish. Paths are those of the server that the line names.

function __mctree_server
    set -l words (commandline -opc)
    set -l count (count $words)
    for i in (seq 2 $count)
        switch $words[$i]
            case --connect -s --server --profiles --ca --cert --key --user --token --token-file
                test $i -lt $count; and printf '%s\n' $words[$i] $words[(math $i + 1)]
            case --tls
                printf '%s\n' $words[$i]
        end
    end
end

function __mctree_paths
    set -l current (commandline -ct)
    string match -q '/*' -- $current; or set current /
    mctree (__mctree_server) --no-retry --timeout 1000 --literal ls (string replace -r '[^/]*$' '' -- $current) 2>/dev/null
end

function __mctree_servers
    set -l profiles $MCTREE_PROFILES
    if test -z "$profiles"
        set -l config $XDG_CONFIG_HOME
        test -n "$config"; or set config ~/.config
        set profiles $config/MultiChannelServer/mctree.profiles
    end
    test -r "$profiles"; and string match -rg '^\[(.*)\] *$' < $profiles
end

set -l commands ls get set watch hold info events stations help
complete -c mctree -f
complete -c mctree -n "not __fish_seen_subcommand_from $commands" -a ls -d 'what is below paths'
complete -c mctree -n "not __fish_seen_subcommand_from $commands" -a get -d 'contents'
complete -c mctree -n "not __fish_seen_subcommand_from $commands" -a set -d 'set contents'
complete -c mctree -n "not __fish_seen_subcommand_from $commands" -a watch -d 'contents and changes'
complete -c mctree -n "not __fish_seen_subcommand_from $commands" -a hold -d 'use an MpxORV and keep it'
complete -c mctree -n "not __fish_seen_subcommand_from $commands" -a info -d 'the server and the connection'
complete -c mctree -n "not __fish_seen_subcommand_from $commands" -a events -d 'what happened at the server'
complete -c mctree -n "not __fish_seen_subcommand_from $commands" -a stations -d 'who offers a server at NATS'
complete -c mctree -n "not __fish_seen_subcommand_from $commands" -a help -d 'all about a command'
complete -c mctree -n "__fish_seen_subcommand_from ls get set watch hold" -a '(__mctree_paths)'
complete -c mctree -n "__fish_seen_subcommand_from help" -a "$commands"

complete -c mctree -l connect -x -d 'the server'
complete -c mctree -s s -l server -x -a '(__mctree_servers)' -d 'a server by its name'
complete -c mctree -l profiles -rF -d 'the file in which servers have names'
complete -c mctree -l tls -d 'encrypted'
complete -c mctree -l ca -rF -d 'whom the certificate of the server must come from'
complete -c mctree -l cert -rF -d 'our own certificate'
complete -c mctree -l key -rF -d 'and its key'
complete -c mctree -l user -x -d 'whose token it is'
complete -c mctree -l token -x -d 'the credential'
complete -c mctree -l token-file -rF -d 'the credential, in a file'
complete -c mctree -l timeout -x -d 'how long to wait for the server, in ms'
complete -c mctree -l no-retry -d 'end at once without a connection'
complete -c mctree -l json -d 'JSON'
complete -c mctree -l literal -d 'paths as they stand'
complete -c mctree -s h -l help -d 'help'
complete -c mctree -s V -l version -d 'the version'
complete -c mctree -n "__fish_seen_subcommand_from ls" -s r -l recursive -d 'all that is below'
complete -c mctree -n "__fish_seen_subcommand_from get" -l wait -x -a exists -d 'wait for a condition'
complete -c mctree -n "__fish_seen_subcommand_from set" -s f -l file -rF -d 'from the lines of a file'
complete -c mctree -n "__fish_seen_subcommand_from watch" -l count -x -d 'end after so many changes'
complete -c mctree -n "__fish_seen_subcommand_from watch" -l changes-only -d 'without what there is'
complete -c mctree -n "__fish_seen_subcommand_from events" -l count -x -d 'so many of the last'
complete -c mctree -n "__fish_seen_subcommand_from events" -l follow -d 'then each that happens'
