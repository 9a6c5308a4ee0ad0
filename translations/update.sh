#!/usr/bin/env bash
# update.sh [directory]: brings the source files of the translations in it (here, unless given) up to date with the
# texts in the code. New texts are marked as unfinished, those that are gone are dropped.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
directory=$(cd "${1:-$here}" && pwd)
cd "$here/.."
options=(-silent -no-obsolete -locations none -I .)
common=devicecontrol/multichannelserver/common
lupdate=$(command -v lupdate || echo /usr/lib/qt5/bin/lupdate)
"$lupdate" "${options[@]}" platform/widgets "$common" -ts "$directory/MultiChannelServerCommon_de.ts"
"$lupdate" "${options[@]}" apps/common apps/pages apps/mcconsole apps/mcserver -ts "$directory/MultiChannelServerApps_de.ts"
"$lupdate" "${options[@]}" apps/designer -ts "$directory/MultiChannelServerDesigner_de.ts"
