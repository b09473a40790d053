#!/usr/bin/env bash
# Menus that are left by a click outside; a context menu elsewhere.
source "$(dirname "$0")/lib.sh"
record menus.qml
click file; sees 'SHOWN file opened'
click 500,400; pause 0.5
click 100,300 3; sees 'SHOWN context opened'
click 500,100; pause 0.5
click 300,200 3; sees 'SHOWN context opened'
click cut; sees 'LOG Cut out'
cameBack
verdict
