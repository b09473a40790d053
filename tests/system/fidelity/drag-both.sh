#!/usr/bin/env bash
# A DragHandler beside a TapHandler, in moves of so many pixels.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record handlers.qml
drag both both@-180,130 $variant; sees 'LOG both dragged false'
click both; sees 'LOG both tapped'
cameBack
verdict
