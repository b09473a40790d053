#!/usr/bin/env bash
# A switch that is dragged on, and one drag that goes back again, in moves of so many pixels.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record draggables.qml
drag toggle@14,20 toggle@80,20 $variant; sees 'LOG switch true'
drag toggle@50,20 toggle@-170,20 $variant; sees 'LOG switch false'
cameBack
named 'Switch#toggle'
verdict
