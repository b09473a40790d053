#!/usr/bin/env bash
# The wheel over a text in a scroll view.
source "$(dirname "$0")/lib.sh"
record wheels.qml
wheel notes down 6; sees 'NOW notes'
wheel notes up 2; sees 'NOW notes'
cameBack
notNamed ':nth'
verdict
