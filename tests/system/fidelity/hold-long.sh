#!/usr/bin/env bash
# A press of three seconds is a press, a pause and a release.
source "$(dirname "$0")/lib.sh"
record areas.qml
hold slow 3; sees 'LOG held slowly'
click buttons; sees 'LOG clicked'
cameBack
calls mousePress mouseRelease mouseClick
has 'snooze('
verdict
