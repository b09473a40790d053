#!/usr/bin/env bash
# A second window that the window manager closes, then the first one.
source "$(dirname "$0")/lib.sh"
needs wmctrl
ends=1
record windows.qml
click openTools; sees 'LOG tools true'; inWindow '^Tools'
wmctrl -i -c "$window"; sees 'LOG tools false'
inWindow '^Scene$'; wmctrl -i -c "$window"; sees 'LOG closing'
cameBack
has 'closeWindow('
verdict
