#!/usr/bin/env bash
# An item that follows at once, without any drag distance, in moves of so many pixels.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record targets.qml
drag immediate immediate@340,-100 $variant; sees 'NOW immediateX'
cameBack
verdict
