#!/usr/bin/env bash
# Both handles of a range slider, in moves of so many pixels.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record draggables.qml
drag first range:0.4,0.5 $variant; sees 'NOW first'
drag second range:0.55,0.5 $variant; sees 'NOW second'
cameBack
named 'RangeSlider#range'
calls mouseDrag mouseDrag
verdict
