#!/usr/bin/env bash
# Branches of a tree view by clicks on their arrows, leaves by clicks, after the wheel.
source "$(dirname "$0")/lib.sh"
needsModule
record tree.qml
click 20,60; sees 'NOW rows 10'
click 100,100; sees 'LOG clicked'
click 40,100; pause 0.4
wheel 200,200 down 2; click 150,200; sees 'LOG clicked'
cameBack
notNamed ':nth'
verdict
