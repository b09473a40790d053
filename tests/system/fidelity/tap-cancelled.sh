#!/usr/bin/env bash
# TapHandlers that are pressed and let go elsewhere, in moves of so many pixels: taps that are none.
# Variants: 5 35 200
source "$(dirname "$0")/lib.sh"
record handlers.qml
drag exclusive exclusive@80,220 $variant; sees 'LOG exclusive canceled'
drag within within@70,100 $variant; sees 'LOG within canceled'
drag tap tap@90,110 $variant
click within; sees 'LOG within tapped'
cameBack
verdict
