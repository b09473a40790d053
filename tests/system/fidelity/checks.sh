#!/usr/bin/env bash
# Check boxes with two and three states, radio buttons, switches that are clicked and dragged.
# Variants: Basic Fusion Material Universal Imagine
source "$(dirname "$0")/lib.sh"
record
click agree; sees 'LOG agree true'
click third; sees 'LOG partly'
apart; click third; sees 'LOG partly'
click large; sees 'LOG chosen Large'
click small; sees 'LOG chosen Small'
click wifi; sees 'LOG wifi true'
drag sound@15,20 sound@75,20 5; sees 'LOG sound true'
drag sound@45,20 sound@-30,20 5; sees 'LOG sound false'
click twin; sees 'LOG twin two true'
cameBack
named 'CheckBox#agree' 'RadioButton#large' 'Switch#wifi'
notNamed ':nth' 'Overlay' 'Rectangle' 'indicator'
verdict
