#!/usr/bin/env bash
# The pointer over an area that hovers, out again, and a click in it.
source "$(dirname "$0")/lib.sh"
record areas.qml
point hoverer; pause 0.4; click hoverer; sees 'LOG hover clicked'
point 300,420; pause 0.4; sees 'LOG hover false'
click buttons; sees 'LOG clicked'
cameBack
verdict
