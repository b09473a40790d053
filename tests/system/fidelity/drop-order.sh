#!/usr/bin/env bash
# Entries of a list that are dragged into another order, in moves of so many pixels.
# Variants: 5 35
source "$(dirname "$0")/lib.sh"
record dropping.qml
drag order@100,20 order@100,120 $variant; sees 'LOG order'; pause 0.3
drag order@100,150 order@100,30 $variant; sees 'LOG order'
cameBack
verdict
