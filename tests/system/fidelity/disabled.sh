#!/usr/bin/env bash
# Clicks on what is disabled: they do nothing, and that is told.
source "$(dirname "$0")/lib.sh"
record ends.qml
click disabled
click within
click plain; sees 'LOG plain'
cameBack
commented disabled
verdict
