#!/usr/bin/env bash
# Popups that are closed by Escape.
source "$(dirname "$0")/lib.sh"
record popups.qml
click opener; sees 'SHOWN popup'
keys Escape; sees 'LOG closed'; pause 0.4
click behind; sees 'LOG behind'
cameBack
verdict
