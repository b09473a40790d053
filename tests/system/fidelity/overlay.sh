#!/usr/bin/env bash
# A window with a closed drawer, tool tips that are up, and a popup without closing: everything else is still clicked.
source "$(dirname "$0")/lib.sh"
record overlaid.qml
click save; sees 'LOG save'
point help; pause 0.6; click help; sees 'LOG help'
point info; pause 0.9; click info; sees 'LOG info'
click list@30,60; sees 'LOG Bob'
apart; click save; sees 'LOG save'
cameBack
named 'Button#save' 'ToolButton#help' 'ToolButton#info' '[text="Bob"]'
notNamed 'Overlay' 'PopupItem' ':nth'
verdict
