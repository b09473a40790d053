#!/usr/bin/env bash
# A text that is selected by a drag in moves of so many pixels.
# Variants: 1 5 35 200
source "$(dirname "$0")/lib.sh"
record texts.qml
drag other@10,20 other@95,20 $variant; sees 'NOW selected'
keys ctrl+c; click plain; keys ctrl+v; sees 'NOW plain'
cameBack
verdict
