#!/usr/bin/env bash
# Full screen and maximised, set by the program, and back.
source "$(dirname "$0")/lib.sh"
record windows.qml
click full; sees 'LOG full true'; pause 1; locate
click plain; sees 'LOG plain'
click full; sees 'LOG full false'; pause 1; locate
click largest; sees 'LOG largest true'; pause 1; locate
click plain; sees 'LOG plain'
click largest; sees 'LOG largest false'; pause 1; locate
click plain; sees 'LOG plain'
cameBack
calls mouseClick mouseClick mouseClick mouseClick mouseClick mouseClick mouseClick
verdict
