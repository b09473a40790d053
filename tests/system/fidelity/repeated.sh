#!/usr/bin/env bash
# Rows of a Repeater with the same buttons in each, two of them with the same text beside.
source "$(dirname "$0")/lib.sh"
record repeated.qml
click 170,60; sees 'LOG call 1'
click 270,100; sees 'LOG delete 2'
click 345,140; sees 'LOG check 3'
click 170,140; sees 'LOG call 3'
cameBack
notNamed ':nth'
verdict
