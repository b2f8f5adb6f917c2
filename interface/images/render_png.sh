#!/usr/bin/env bash
# Renders the icons that are also needed as PNG files from their SVG drawings. Needs rsvg-convert (librsvg2-bin).
set -euo pipefail
cd "$(dirname "$0")"
for name in MarkToolPopup OpenMap Overlays movearrows; do rsvg-convert -w 96 -h 96 -o "$name.png" "$name.svg"; done
rsvg-convert -w 256 -h 256 -o appicon.png appicon.svg
