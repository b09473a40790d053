#!/usr/bin/env bash
# A swipe view by drags in moves of so many pixels.
# Variants: 1 5 35
source "$(dirname "$0")/lib.sh"
record pages.qml
drag 400,60 60,70 $variant; sees 'NOW page 1'; pause 0.8
click swipe; sees 'LOG On page 1'
drag 400,60 60,70 $variant; sees 'NOW page 2'; pause 0.8
drag 60,60 400,70 $variant; sees 'NOW page 1'; pause 0.8
click swipe; sees 'LOG On page 1'
cameBack
verdict
