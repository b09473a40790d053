#!/usr/bin/env bash
# From one menu of the bar to the next by moving, and an entry there.
source "$(dirname "$0")/lib.sh"
record menus.qml
click file; sees 'SHOWN file opened'
glide edit; sees 'SHOWN edit opened'
glide copy; click copy; sees 'LOG &Copy'
cameBack
verdict
