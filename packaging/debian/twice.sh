#!/usr/bin/env bash
# twice.sh PACKAGES: builds the packages of this tree once more, in another folder and at another time, and fails unless they
# are the same byte by byte.
set -euo pipefail
packages=$(realpath "$1")
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
export SOURCE_DATE_EPOCH

other=$(mktemp -d "${TMPDIR:-/tmp}/mcs-another-folder-XXXXXX")
trap 'rm -rf "$other"' EXIT
git ls-files -z --cached --others --exclude-standard | tar --null --files-from=- -cf - | tar -C "$other" -xmf -
"$other/packaging/debian/build.sh" "$other"

status=0
for package in "$packages"/*.deb; do
    cmp "$package" "$other/build/package/packages/${package##*/}" || status=1
done
[ "$status" -ne 0 ] || echo "built twice: $(find "$packages" -name '*.deb' | wc -l) packages, equal byte by byte"
exit "$status"
