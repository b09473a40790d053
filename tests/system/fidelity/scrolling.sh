#!/usr/bin/env bash
# A scroll view by the wheel, by its bar and by a click beside the grip; what is there then is clicked.
# Variants: Basic Fusion Material Universal Imagine
source "$(dirname "$0")/lib.sh"
record
click 40,150; sees 'LOG Row'
wheel 60,150 down 5; sees 'NOW y'; click 40,150; sees 'LOG Row'
wheel 60,150 up 2; click 40,150; sees 'LOG Row'
drag bar:0.5,0.15 bar:0.5,0.6; pause 0.4; click 40,150; sees 'LOG Row'
click bar:0.5,0.2; pause 0.4; click 40,150; sees 'LOG Row'
cameBack
notNamed ':nth' 'Rectangle' 'contentItem'
verdict
