#!/usr/bin/env bash
# Something that is dragged onto an area that takes it, inside of the program, in moves of so many pixels.
# Variants: 1 5 35
source "$(dirname "$0")/lib.sh"
record dropping.qml
drag chip left $variant; sees 'LOG action 2'
drag chip right $variant; sees 'LOG dropped right'
drag chip 560,350 $variant; sees 'LOG action 0'
cameBack
verdict
