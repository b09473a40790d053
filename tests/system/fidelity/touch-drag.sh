#!/usr/bin/env bash
# One finger that drags: an item by its handler, one by its MouseArea.
source "$(dirname "$0")/lib.sh"
needsTouch
record targets.qml
swipe handler handler@240,90; sees 'LOG handler false'
swipe area area@340,40; sees 'LOG area released'
cameBack
verdict
