#!/usr/bin/env bash
# Taps by a finger: on handlers, and on buttons, which take them as clicks.
source "$(dirname "$0")/lib.sh"
needsTouch
record handlers.qml
tap tap; sees 'LOG tapped 1'
tap exclusive; sees 'LOG exclusive tapped'
tap both; sees 'LOG both tapped'
cameBack
verdict
