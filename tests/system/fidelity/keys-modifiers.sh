#!/usr/bin/env bash
# Modifier keys that are pressed alone.
source "$(dirname "$0")/lib.sh"
record keyboard.qml
click modifiers
keys Shift_L; sees 'LOG released'
keys Control_L; sees 'LOG released'
holdKey Alt_L 0.5; sees 'LOG released'
withKey ctrl keys Right; sees 'LOG released'
cameBack
verdict
