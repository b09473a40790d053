#!/usr/bin/env bash
# Drag and drop of the window system, in moves of so many pixels: onto an area, and beside.
# Variants: 5 35
source "$(dirname "$0")/lib.sh"
record dropping.qml
drag paper left $variant 0.6; sees 'LOG dropped left paper'; pause 0.5
drag paper right $variant 0.6; sees 'LOG dropped right paper'; pause 0.5
drag paper 150,350 $variant 0.6; sees 'LOG finished 0'; pause 0.5
drag chip left; sees 'LOG action 2'
cameBack
has 'dragAndDrop('
verdict
