#!/usr/bin/env bash
# Pressed on the menu bar and let go below it: that is no click, and no menu opens; moves of so many pixels.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record outside.qml
drag file 300,250 $variant; pause 0.3
click erase; sees 'LOG erase'
drag file file@15,300 $variant; pause 0.3
click agree; sees 'LOG agree true'
click file; sees 'SHOWN menu opened'
click open; sees 'LOG open'
cameBack
verdict
