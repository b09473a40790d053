#!/usr/bin/env bash
# A name that fits several objects: replay --strict refuses it, and without it plays on.
source "$(dirname "$0")/lib.sh"
record names.qml
click 350,40; sees 'LOG by text'
cameBack --strict
echo 'mouseClick("ApplicationWindow#main Button[text=\"Inside\"]:visible", 10, 10, Qt.LeftButton);' >>"$out.js"
replay; [ "$replayStatus" = 0 ] || problem "replay gave $replayStatus"
replay --strict; [ "$replayStatus" = 1 ] || problem "replay --strict gave $replayStatus"
verdict
