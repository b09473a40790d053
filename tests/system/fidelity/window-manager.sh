#!/usr/bin/env bash
# A window that the window manager moves, resizes, maximises and restores in single steps.
source "$(dirname "$0")/lib.sh"
needs wmctrl
record windows.qml
xdotool windowmove "$window" 300 200; pause 1; locate
click plain; sees 'LOG plain'
xdotool windowsize "$window" 520 440; sees 'NOW size 520'; pause 0.6
wmctrl -i -r "$window" -b add,maximized_vert,maximized_horz; sees 'NOW visibility 4'; pause 1; locate
click plain; sees 'LOG plain'
wmctrl -i -r "$window" -b remove,maximized_vert,maximized_horz; sees 'NOW visibility 2'; pause 1; locate
apart; click plain; sees 'LOG plain'
cameBack
has 'moveWindow('
has 'setWindowSize('
has 'WindowState.Maximize'
verdict
