#!/usr/bin/env bash
# A window that is a popup: an entry of it, twice.
source "$(dirname "$0")/lib.sh"
record windows.qml
click popup; sees 'LOG chooser true'
click 200,370; sees 'LOG chosen'
apart; click popup; sees 'LOG chooser true'
click 200,340; sees 'LOG chosen Red'
apart; click plain; sees 'LOG plain'
cameBack
verdict
