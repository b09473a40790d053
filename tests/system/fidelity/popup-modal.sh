#!/usr/bin/env bash
# A modal popup that clicks outside do not close: what is behind stays untouched.
source "$(dirname "$0")/lib.sh"
record popups.qml
click dimmer; sees 'SHOWN modal'
click behind
click done; sees 'LOG modal closed'; pause 0.4
click behind; sees 'LOG behind'
cameBack
named 'Button#done'
notNamed ':nth'
verdict
