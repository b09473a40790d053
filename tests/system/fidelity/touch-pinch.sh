#!/usr/bin/env bash
# Two fingers that go apart on an item with a PinchHandler.
source "$(dirname "$0")/lib.sh"
needsTouch
record handlers.qml
touch '1:down:250:310 2:down:290:310'
for i in 1 2 3 4 5 6 7 8 9 10 11 12; do touch "1:move:$((250 - 3 * i)):310 2:move:$((290 + 3 * i)):310"; done
touch '1:up:214:310 2:up:326:310'
sees 'LOG pinch false'
cameBack
verdict
