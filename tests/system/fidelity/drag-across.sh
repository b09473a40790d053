#!/usr/bin/env bash
# An item that moves along one axis between limits, in moves of so many pixels, and far beyond the limit.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record targets.qml
drag across across@450,45 $variant; sees 'PLACE across'
drag across 615,310 $variant; sees 'PLACE across'
cameBack
calls mouseDrag mouseDrag
verdict
