#!/usr/bin/env bash
# The number pad, function keys, page keys and Escape.
source "$(dirname "$0")/lib.sh"
record keyboard.qml
keys KP_Left; sees 'LOG released'
keys KP_Enter; sees 'LOG released'
keys Prior Next; sees 'LOG released'
keys F7; sees 'LOG released'
keys Escape; sees 'LOG released'
keys ctrl+alt+x; sees 'LOG released'
cameBack
verdict
