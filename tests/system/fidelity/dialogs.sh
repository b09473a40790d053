#!/usr/bin/env bash
# A modal dialog that is accepted, rejected, left by Escape and by a click outside; one that is not modal.
# Variants: Basic Fusion Material Universal Imagine
source "$(dirname "$0")/lib.sh"
record
click openModal; sees 'SHOWN modal opened'
click name; typed 'Ada'; click ok; sees 'LOG renamed Ada'; pause 0.5
click openModal; sees 'SHOWN modal opened'
click cancel; sees 'LOG kept'; pause 0.5
click openModal; sees 'SHOWN modal opened'
keys Escape; sees 'LOG kept'; pause 0.5
click openModal; sees 'SHOWN modal opened'
click 500,60; sees 'LOG kept'; pause 0.5
click openFree; sees 'SHOWN free opened'
click tick; sees 'LOG keep true'
click behind; sees 'LOG behind'
click close; sees 'LOG free closed'
cameBack
named '[text="OK"]' 'CheckBox#tick' 'Button#behind' 'TextField#field'
notNamed ':nth'
verdict
