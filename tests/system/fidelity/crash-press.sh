#!/usr/bin/env bash
# A press that makes the program crash, before it is a click, stands in the script.
source "$(dirname "$0")/lib.sh"
needsModule
ends=1 expectedStatus=2
record crashes.qml
click plain; sees 'LOG plain'
click press; pause 1
cameBack
named 'Button#press'
verdict
