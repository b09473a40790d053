#!/usr/bin/env bash
# A drawer opened by a button and by a drag from the edge, an entry, a combo box in it, a click outside; clicks while it is closed.
# Variants: Basic Fusion Material Universal Imagine
source "$(dirname "$0")/lib.sh"
record
click save; sees 'LOG save'
click opener; sees 'SHOWN drawer opened'
click home; sees 'LOG drawer closed'; pause 0.5
drag 3,200 230,200 8; sees 'SHOWN drawer opened'
click pick; sees 'SHOWN pick opened'
click green; sees 'LOG pick Green'; pause 0.4
click 400,300; sees 'LOG drawer closed'; pause 0.5
click save; sees 'LOG save'
cameBack
named 'Button#save' 'ItemDelegate#home' 'ComboBox#pick' '[text="Green"]'
notNamed ':nth'
verdict
