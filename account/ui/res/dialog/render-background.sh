#!/bin/sh
# Renders the background from its drawing, once per scale. Needs rsvg-convert (librsvg2-bin, librsvg).
set -eu
cd "$(dirname "$0")"
rsvg-convert -w 450 -h 560 -o login_dlg_back_ground.png login_dlg_back_ground.svg
rsvg-convert -w 900 -h 1120 -o login_dlg_back_ground@2x.png login_dlg_back_ground.svg
