#!/usr/bin/env bash
# Five notches of the wheel over a Flickable, then two back.
source "$(dirname "$0")/lib.sh"
record wheels.qml
wheel flickable down 5; sees 'NOW flickable'
wheel flickable up 2; sees 'NOW flickable'
cameBack
named 'Flickable#flickable'
calls mouseWheel mouseWheel
verdict
