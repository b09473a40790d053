#!/usr/bin/env bash
# A MouseArea by all three buttons, with and without modifiers, at points that it tells.
source "$(dirname "$0")/lib.sh"
record areas.qml
click buttons@10,10; sees 'LOG clicked 1 0 10 10'
click buttons@60,30 3; sees 'LOG clicked 2'
click buttons@90,50 2; sees 'LOG clicked 4'
withKey ctrl click buttons@120,20; sees 'LOG clicked 1 67108864'
withKey shift click buttons@140,60; sees 'LOG clicked 1 33554432'
click lefty 3; sees 'LOG right only'
click turned:0.3,0.6; sees 'LOG turned'
cameBack
has 'Qt.RightButton'
has 'Qt.ControlModifier'
verdict
