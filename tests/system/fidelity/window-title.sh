#!/usr/bin/env bash
# A window whose title changes while it is open.
source "$(dirname "$0")/lib.sh"
record windows.qml
click openTools; sees 'LOG tools true'
inWindow '^Tools'; click 70,40; sees 'LOG hammer'
inWindow '^Scene$'; click rename; sees 'LOG renamed'
inWindow '^Tools'; click 70,40; sees 'LOG hammer'
cameBack
verdict
