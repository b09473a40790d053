#!/usr/bin/env bash
# A DragHandler, straight and on a slanting way, in moves of so many pixels.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record targets.qml
drag handler handler@340,40 $variant; sees 'LOG handler false'
drag 360,180 150,400 $variant; sees 'LOG handler false'
cameBack
calls mouseDrag mouseDrag
verdict
