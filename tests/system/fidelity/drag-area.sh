#!/usr/bin/env bash
# The drag.target of a MouseArea, straight and on a slanting way, in moves of so many pixels.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record targets.qml
drag area area@440,40 $variant; sees 'LOG area released'
drag area area@-170,280 $variant; sees 'LOG area released'
cameBack
calls mouseDrag mouseDrag
verdict
