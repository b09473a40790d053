#!/usr/bin/env bash
# Keys that are held: auto-repeat, which the program can tell from presses.
source "$(dirname "$0")/lib.sh"
record keyboard.qml
holdKey Right 1.5; sees 'LOG released'
keys Left; sees 'LOG released'
holdKey a 1.2; sees 'LOG released'
click button; sees 'LOG up'
holdKey space 0.9; sees 'LOG up'
cameBack
verdict
