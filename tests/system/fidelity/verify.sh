#!/usr/bin/env bash
# record --verify replays by itself and says that it came back.
source "$(dirname "$0")/lib.sh"
recordOptions=--verify
record buttons.qml
click plain; sees 'LOG save'
click toggle; sees 'LOG bold true'
stopRecording
grep -qi 'came back' "$out.recorded" || problem "record --verify does not say that it came back"
[ "$recordStatus" = 0 ] || problem "record --verify gave $recordStatus"
came=yes
verdict
