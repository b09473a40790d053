#!/usr/bin/env bash
# A click that makes the program crash stands in the script.
source "$(dirname "$0")/lib.sh"
needsModule
ends=1 expectedStatus=2
record crashes.qml
click plain; sees 'LOG plain'
click crash; pause 1
cameBack
named 'Button#crash'
calls mouseClick mouseClick
verdict
