#!/usr/bin/env bash
# A button that shows while its row is hovered.
source "$(dirname "$0")/lib.sh"
record hovers.qml
glide list@30,60; pause 0.3; glide list@350,60; pause 0.2; click list@350,60; sees 'LOG delete News'
glide list@40,100; pause 0.3; click list@40,100; sees 'LOG Chat'
glide list@350,20; pause 0.2; click list@350,20; sees 'LOG delete Mail'
cameBack
notNamed ':nth'
verdict
