#!/usr/bin/env bash
# The wheel over a list inside a flickable: the list first, and behind its end the flickable.
source "$(dirname "$0")/lib.sh"
record nested.qml
wheel 150,100 down 2; sees 'NOW inner'
click 150,100; sees 'LOG'
wheel 400,100 down 3; sees 'NOW outer'
click 150,100; sees 'LOG'
wheel 150,120 down 10
cameBack
notNamed ':nth'
verdict
