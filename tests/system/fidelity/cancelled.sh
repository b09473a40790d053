#!/usr/bin/env bash
# Pressed on a button, a check box, a tap handler and an area, and let go outside: no click; moves of so many pixels.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record outside.qml
drag erase erase@40,200 $variant; sees 'LOG canceled'
drag agree agree@120,260 $variant
drag spot spot@60,190 $variant; sees 'LOG tap pressed'
drag field field@50,180 $variant; sees 'LOG area released'
click erase; sees 'LOG erase'
cameBack
named 'Button#erase' 'CheckBox#agree'
verdict
