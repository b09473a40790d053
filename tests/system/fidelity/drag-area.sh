#!/usr/bin/env bash
# The drag.target of a MouseArea, straight and on a slanting way, in moves of so many pixels.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record targets.qml
drag area area@340,40 $variant; sees 'NOW areaX'
drag 360,60 150,300 $variant; sees 'NOW areaY'
cameBack
calls mouseDrag mouseDrag
verdict
