#!/usr/bin/env bash
# A list that a finger drags, and an entry that it taps.
source "$(dirname "$0")/lib.sh"
needsTouch
record list.qml
swipe 100,400 100,150; pause 0.5
tap 60,200; sees 'LOG clicked'
cameBack
verdict
