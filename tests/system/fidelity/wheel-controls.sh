#!/usr/bin/env bash
# The wheel over a slider, a spin box and a combo box.
source "$(dirname "$0")/lib.sh"
record wheels.qml
wheel slider up 4; sees 'NOW slider'
wheel spin up 3; sees 'NOW spin'
wheel combo down 5; sees 'NOW combo'
cameBack
named 'Slider#slider' 'SpinBox#spin' 'ComboBox#combo'
calls mouseWheel mouseWheel mouseWheel
verdict
