#!/usr/bin/env bash
# A PointHandler that tells where it was pressed and let go.
source "$(dirname "$0")/lib.sh"
record handlers.qml
click pointed@30,30; sees 'LOG point false'
drag pointed@30,50 pointed@130,60; sees 'LOG point false'
cameBack
verdict
