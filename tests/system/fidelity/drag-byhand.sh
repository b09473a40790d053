#!/usr/bin/env bash
# An item that its MouseArea moves in onPositionChanged, in moves of so many pixels.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record targets.qml
drag byHand byHand@240,-160 $variant; sees 'NOW byHandX'
cameBack
verdict
