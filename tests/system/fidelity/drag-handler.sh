#!/usr/bin/env bash
# A DragHandler, straight and on a slanting way, in moves of so many pixels.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record targets.qml
drag handler handler@440,40 $variant; sees 'LOG handler false'
drag handler handler@-170,260 $variant; sees 'LOG handler false'
cameBack
calls mouseDrag mouseDrag
verdict
