#!/usr/bin/env bash
# Something that shows while a HoverHandler is hovered, and is clicked then.
source "$(dirname "$0")/lib.sh"
record handlers.qml
glide lit@20,40; pause 0.3; glide dot; pause 0.3; click dot; sees 'LOG dot'
glide 300,420; pause 0.3; sees 'LOG hovered false'
click tap; sees 'LOG tapped'
cameBack
verdict
