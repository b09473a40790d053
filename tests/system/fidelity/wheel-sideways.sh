#!/usr/bin/env bash
# The wheel that is turned sideways, and up and down over what goes only sideways.
source "$(dirname "$0")/lib.sh"
record wheels.qml
wheel wide right 4; sees 'NOW wide'
wheel wide left 1; sees 'NOW wide'
wheel list down 2; sees 'NOW list'
cameBack
named 'Flickable#wide' 'ListView#list'
verdict
