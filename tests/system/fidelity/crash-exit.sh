#!/usr/bin/env bash
# A click that ends the program by _exit with code 0.
source "$(dirname "$0")/lib.sh"
needsModule
ends=1
record crashes.qml
click plain; sees 'LOG plain'
click exit; pause 1
cameBack
calls mouseClick mouseClick
named 'Button#exit'
verdict
