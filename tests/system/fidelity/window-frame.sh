#!/usr/bin/env bash
# A window that is moved and resized by its frame, as a hand does.
source "$(dirname "$0")/lib.sh"
record windows.qml
glide 200,-10; xdotool mousedown 1; sleep 0.1; glide 330,90 10 0.03; sleep 0.2; xdotool mouseup 1; pause 0.8; locate
click plain; sees 'LOG plain'
glide 419,401; xdotool mousedown 1; sleep 0.1; glide 520,460 10 0.03; sleep 0.2; xdotool mouseup 1; sees 'NOW size'; pause 0.8
click grow; sees 'LOG grow'
cameBack
verdict
