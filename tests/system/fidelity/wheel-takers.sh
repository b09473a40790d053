#!/usr/bin/env bash
# The wheel over a MouseArea, also with Ctrl, and over a WheelHandler.
source "$(dirname "$0")/lib.sh"
record wheels.qml
wheel area down 3; sees 'NOW area'
withKey ctrl wheel area up 2; sees 'NOW area'
wheel handled up 2; sees 'NOW handled'
cameBack
verdict
