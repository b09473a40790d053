#!/usr/bin/env bash
# A menu bar by Alt and keys, by arrows, Return and Escape.
source "$(dirname "$0")/lib.sh"
record menus.qml
click area; keys alt+f; sees 'SHOWN file opened'
keys Down Return; sees 'LOG &New'
keys alt+e; sees 'SHOWN edit opened'
keys Down Return; sees 'LOG &Copy'
keys alt+f; sees 'SHOWN file opened'
keys Escape; pause 0.3
click file; sees 'SHOWN file opened'
keys Down Down Down Return; sees 'LOG &Wrap true'
cameBack
verdict
