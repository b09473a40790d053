#!/usr/bin/env bash
# Sliders, a range slider and a dial, dragged by their handles in moves of 8 pixels, and by keys.
# Variants: Basic Fusion Material Universal Imagine
source "$(dirname "$0")/lib.sh"
record
drag knob volume:0.7,0.5; sees 'NOW volume 7'
drag stepsKnob steps:0.42,0.5; sees 'NOW steps 4'
drag first range:0.4,0.5; sees 'NOW first'
drag second range:0.6,0.5; sees 'NOW second'
drag dial:0.3,0.7 dial:0.75,0.2 6; sees 'NOW dial'
drag uprightKnob upright:0.5,0.3; sees 'NOW upright'
click steps:0.85,0.5; sees 'NOW steps [89]'
keys Right; sees 'NOW steps (9|10)'
cameBack
named 'Slider#volume' 'RangeSlider#range' 'Dial#dial'
notNamed ':nth' 'Rectangle' 'handle' 'Panel'
verdict
