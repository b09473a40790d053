#!/usr/bin/env bash
# Spin boxes by their buttons, by keys and by text, also inside of a popup.
# Variants: Basic Fusion Material Universal Imagine
source "$(dirname "$0")/lib.sh"
record
click up; sees 'LOG count 1'
apart; click up; sees 'LOG count 2'
click down; sees 'LOG count 1'
click sizeUp; sees 'LOG size 1'
doubleClick sizeText; typed 42; keys Return; sees 'LOG size 42'
keys Up; sees 'LOG size 43'
click opener; sees 'SHOWN opened'
click pageUp; sees 'LOG page 8'
doubleClick pageText; typed 12; keys Return; sees 'LOG page 12'
cameBack
named 'SpinBox#count' 'SpinBox#size' 'SpinBox#page'
notNamed ':nth' 'Overlay' 'Rectangle'
verdict
