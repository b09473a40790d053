#!/usr/bin/env bash
# A tumbler that does not wrap, in moves of so many pixels, let go at rest.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record draggables.qml
drag tumbler:0.5,0.85 tumbler:0.5,0.25 $variant 0.7; sees 'NOW tumbler'
cameBack
notNamed ':nth'
verdict
