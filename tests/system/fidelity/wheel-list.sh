#!/usr/bin/env bash
# Many notches over a list, whose entries slide below the pointer: one statement; then the entry that is there.
source "$(dirname "$0")/lib.sh"
record wheels.qml
wheel list down 9; sees 'NOW list'
click list; sees 'LOG Entry'
wheel list up 3; sees 'NOW list'
click list; sees 'LOG Entry'
cameBack
named 'ListView#list'
calls mouseWheel mouseClick mouseWheel mouseClick
verdict
