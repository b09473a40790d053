#!/usr/bin/env bash
# The last click ends the program with another exit code: replay says so by its own.
source "$(dirname "$0")/lib.sh"
ends=1 expectedStatus=2
record ends.qml
click plain; sees 'LOG plain'
click fail; sees 'LOG fail'
cameBack
calls mouseClick mouseClick
verdict
