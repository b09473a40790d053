#!/usr/bin/env bash
# The last click ends the program.
source "$(dirname "$0")/lib.sh"
ends=1
record ends.qml
click plain; sees 'LOG plain'
click quit; sees 'LOG quit'
cameBack
calls mouseClick mouseClick
named 'Button#quit'
verdict
