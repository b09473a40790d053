#!/usr/bin/env bash
# The third letter that is typed ends the program.
source "$(dirname "$0")/lib.sh"
ends=1 expectedStatus=2
record ends.qml
click third; typed 'abc'; sees 'LOG letters 3'
cameBack
has '"abc"'
verdict
