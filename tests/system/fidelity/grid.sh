#!/usr/bin/env bash
# Tiles of a grid that say nothing but their index, before and after the wheel; keys.
source "$(dirname "$0")/lib.sh"
record grid.qml
click 40,40; sees 'LOG tile 0'
click 200,120; sees 'LOG tile'
wheel 200,200 down 8; click 200,200; sees 'LOG tile'
click 40,280; sees 'LOG tile'
keys Right Down; sees 'NOW current'
cameBack
notNamed ':nth'
named '[index="0"]'
verdict
