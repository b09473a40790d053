#!/usr/bin/env bash
# A list that is flicked; what is there when it has come to rest is clicked.
source "$(dirname "$0")/lib.sh"
record list.qml
flick 100,400 100,150; pause 1
click 60,200; sees 'LOG clicked'
flick 100,150 100,350; pause 1
click 60,200; sees 'LOG clicked'
cameBack
calls flick mouseClick flick mouseClick
verdict
