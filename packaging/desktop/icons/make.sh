#!/usr/bin/env bash
# Draws the icons of all sizes from the one that has none: hicolor/scalable.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/hicolor"
for size in 16 22 24 32 48 64 128 256; do
    mkdir -p "${size}x$size/apps"
    rsvg-convert -w "$size" -h "$size" scalable/apps/mcconsole.svg -o "${size}x$size/apps/mcconsole.png"
done
