#!/usr/bin/env bash
# Pressed on the menu bar, let go on an entry of the menu that opens; moves of so many pixels.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record outside.qml
press file; sees 'SHOWN menu opened'
glide open $variant; pause 0.3; release; sees 'LOG open'
press file; sees 'SHOWN menu opened'
glide 400,300 $variant; pause 0.3; release; pause 0.4
click erase
cameBack
verdict
