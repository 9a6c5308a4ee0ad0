#!/usr/bin/env bash
# take.sh <directory of the programs>: takes the pictures of all windows anew, from the running programs.
set -euo pipefail
programs=$(cd "$1" && pwd)
cd "$(dirname "${BASH_SOURCE[0]}")"
work=$(mktemp -d)
server= module=
cleanup() {
    for process in $server $module; do kill "$process" 2>/dev/null && wait "$process" || true; done
    rm -rf "$work"
}
trap cleanup EXIT
# port_in <file>: the port that a program says it listens on; nothing before it does.
port_in() { sed -n 's/^listening on .*:\([0-9]*\)$/\1/p' "$1"; }
# pause <process>: a moment, if it still runs.
pause() { kill -0 "$1" && { read -r -t 0.1 <> <(:) || true; }; }

export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8

cat >"$work/server.ini" <<'INI'
[StaticMpxORVs]
Names="Tower, Van 1"
Tower\Comment=ATC position 2
Van%201\Comment=on the road

[GTS]
ModuleCount=1
Module0\Index=0
Module0\Name=ADAM-6051
Module0\Address=127.0.0.1
Module0\PollInterval=100
Module0\Assignments\AssignmentCount=12
Module0\Assignments\DI_0=121500000
Module0\Labels\DI_0=Tower 1
INI
"$programs/dimodule" --listen 127.0.0.1:0 </dev/null >"$work/module" &
module=$!
until port=$(port_in "$work/module") && [ -n "$port" ]; do pause "$module"; done
export MCS_MODBUS_PORT=$port
"$programs/mcserver" --name mast-north --listen 127.0.0.1:0 --config "$work/server.ini" --screenshot . >/dev/null

"$programs/mcserver" --name mast-north --headless --listen 127.0.0.1:0 --config "$work/server.ini" >"$work/out" &
server=$!
until port=$(port_in "$work/out") && [ -n "$port" ]; do pause "$server"; done
until "$programs/mctree" --connect "127.0.0.1:$port" get /MultiChannelServer/Status/BootState | grep -q Ready; do pause "$server"; done
console=("$programs/mcconsole" --connect "127.0.0.1:$port" --config "$work/console.ini" --name Console)
"${console[@]}" --screenshot .
"${console[@]}" --locale de --dark --screenshot "$work/german"
cp "$work/german/console-MyMpxORV.png" console-MyMpxORV-german-dark.png
ls -- *.png
