#!/usr/bin/env bash
# Moving about over things that only light up becomes no statement.
source "$(dirname "$0")/lib.sh"
record hovers.qml
glide list@30,60; pause 0.3; glide list@200,100; pause 0.3; glide 40,330; pause 0.3
click menuButton; sees 'LOG more'
cameBack
calls mouseClick
verdict
