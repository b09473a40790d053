#!/usr/bin/env bash
# What scripts could take for something else: <, quotes, backslashes, dollars, a tabulator.
source "$(dirname "$0")/lib.sh"
record texts.qml
click plain; typed '<b>"it'"'"'s" \n $1 `x` </b>'; sees 'NOW plain'
click area; keys ctrl+End; typed ' <Return>'; keys Return; typed '<'; sees 'NOW area'
cameBack
verdict
