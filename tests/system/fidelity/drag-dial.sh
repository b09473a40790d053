#!/usr/bin/env bash
# A dial, in moves of so many pixels, on a slanting way.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record draggables.qml
drag dial:0.1,0.75 dial:0.55,0.05 $variant; sees 'NOW dial'
cameBack
named 'Dial#dial'
calls mouseDrag
verdict
