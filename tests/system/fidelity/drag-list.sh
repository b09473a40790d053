#!/usr/bin/env bash
# A list that is dragged in moves of so many pixels and let go at rest.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record list.qml
drag 100,400 100,90 $variant 0.8; pause 1
click 60,200; sees 'LOG clicked'
cameBack
verdict
