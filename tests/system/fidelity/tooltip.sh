#!/usr/bin/env bash
# A click while a tool tip is up, and one after it has gone.
source "$(dirname "$0")/lib.sh"
record popups.qml
point tipped; pause 1; click tipped; sees 'LOG tip'
glide behind; pause 0.6; click behind; sees 'LOG behind'
cameBack
named 'Button#tipped' 'Button#behind'
notNamed 'Overlay' 'ToolTip'
verdict
