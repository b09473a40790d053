#!/usr/bin/env bash
# A window that its program moves: the next click counts.
source "$(dirname "$0")/lib.sh"
record windows.qml
click shift; sees 'LOG shift'; pause 0.6; locate
click plain; sees 'LOG plain'
apart; click grow; sees 'LOG grow'; pause 0.6
click plain; sees 'LOG plain'
cameBack
calls mouseClick mouseClick mouseClick mouseClick
verdict
