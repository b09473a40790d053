#!/usr/bin/env bash
# A scroll bar that belongs to nothing, in moves of so many pixels.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record draggables.qml
drag bar:0.5,0.1 bar:0.5,0.75 $variant; sees 'NOW bar'
drag bar:0.5,0.75 bar:0.5,0.4 $variant; sees 'NOW bar'
cameBack
named 'ScrollBar#bar'
calls mouseDrag mouseDrag
verdict
