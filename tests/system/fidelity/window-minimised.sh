#!/usr/bin/env bash
# A window that is minimised and shown again.
source "$(dirname "$0")/lib.sh"
needs wmctrl
record windows.qml
click plain; sees 'LOG plain'
xdotool windowminimize "$window"; pause 1
xdotool windowmap "$window"; xdotool windowactivate "$window"; pause 1
click grow; sees 'LOG grow'
cameBack
verdict
