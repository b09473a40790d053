#!/usr/bin/env bash
# The handle between the parts of a split view, in moves of so many pixels.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record draggables.qml
drag left@43,60 left@263,64 $variant; sees 'NOW split'
cameBack
calls mouseDrag
notNamed ':nth'
verdict
