#!/usr/bin/env bash
# A popup with a slider, a combo box and another popup in it; clicks outside close one after the other.
source "$(dirname "$0")/lib.sh"
record popups.qml
click opener; sees 'SHOWN popup'
drag slider:0.05,0.5 slider:0.7,0.5; sees 'NOW slider [67]'
click popupBox; sees 'SHOWN drinks'
click coffee; sees 'LOG drink Coffee'; pause 0.4
click deep; sees 'SHOWN inner'
click innermost; sees 'LOG innermost'; pause 0.4
click deep; sees 'SHOWN inner'
click 560,300; sees 'LOG inner closed'; pause 0.4
click behind
cameBack
named 'Slider#slider' 'ComboBox#box' 'Button#deep' 'Button#innermost'
notNamed ':nth'
verdict
