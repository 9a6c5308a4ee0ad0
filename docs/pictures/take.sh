#!/usr/bin/env bash
# take.sh <directory of the programs>: takes the pictures of all windows anew, from the running programs.
set -euo pipefail
programs=$(cd "$1" && pwd)
cd "$(dirname "${BASH_SOURCE[0]}")"
work=$(mktemp -d)
server=
cleanup() {
    [ -n "$server" ] && kill "$server" 2>/dev/null && wait "$server" || true
    rm -rf "$work"
}
trap cleanup EXIT
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8

cat >"$work/server.ini" <<'INI'
[StaticMpxORVs]
Names="Tower, Van 1"
Tower\Comment=ATC position 2
Van%201\Comment=on the road
INI
"$programs/mcserver" --listen 127.0.0.1:0 --config "$work/server.ini" --screenshot . >/dev/null

"$programs/mcserver" --headless --listen 127.0.0.1:0 --config "$work/server.ini" >"$work/out" &
server=$!
until port=$(sed -n 's/^listening on .*:\([0-9]*\)$/\1/p' "$work/out") && [ -n "$port" ]; do
    kill -0 "$server"
    read -r -t 0.1 <> <(:) || true
done
until "$programs/mctree" --connect "127.0.0.1:$port" get /MultiChannelServer/Status/BootState | grep -q Ready; do :; done
console=("$programs/mcconsole" --connect "127.0.0.1:$port" --config "$work/console.ini" --name Console)
"${console[@]}" --screenshot .
"${console[@]}" --locale de --dark --screenshot "$work/german"
cp "$work/german/console-MyMpxORV.png" console-MyMpxORV-german-dark.png
ls -- *.png
