#!/usr/bin/env bash
# What takes the press itself: an item with a handler below its decorations, an area on top of a button, areas that pass a click on; nothing at all.
source "$(dirname "$0")/lib.sh"
record covers.qml
click inside; sees 'LOG tapped'
click covered; sees 'LOG blocker'
click composed; sees 'LOG below'
click plain
click last; sees 'LOG last'
cameBack
named 'Rectangle#inside' 'MouseArea#blocker' 'Button#last'
verdict
