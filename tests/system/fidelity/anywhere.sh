#!/usr/bin/env bash
# A name whose first step is no window is looked for in all windows.
source "$(dirname "$0")/lib.sh"
record windows.qml
click openTools; sees 'LOG tools true'
inWindow '^Tools'; click 70,40; sees 'LOG hammer'
stopRecording
sed -i 's/^\(mouseClick("\)[^ ]*Window[^ ]* Button/\1Button/' "$out.js"
notNamed 'Window'
replay
same
verdict
