#!/usr/bin/env bash
# Tiles of a path view, tapped and dragged.
source "$(dirname "$0")/lib.sh"
record path.qml
click 320,180; sees 'LOG tile'
pause 0.8; drag 300,180 120,180 8 0.7; sees 'NOW current'; pause 0.8
click 230,180; sees 'LOG tile'
cameBack
notNamed ':nth'
verdict
