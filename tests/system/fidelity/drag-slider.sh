#!/usr/bin/env bash
# The handle of a slider, in moves of so many pixels, there and half the way back.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record draggables.qml
drag knob slider:0.8,0.5 $variant; sees 'NOW slider [78]'
drag slider:0.8,0.5 slider:0.35,0.5 $variant; sees 'LOG slider released'
cameBack
named 'Slider#slider'
calls mouseDrag mouseDrag
verdict
