#!/usr/bin/env bash
# A key that is held in a text field.
source "$(dirname "$0")/lib.sh"
record texts.qml
click plain; typed 'no'; holdKey o 1.2; sees 'NOW plain "nooo'
holdKey BackSpace 1; sees 'NOW plain'
typed 'done'
cameBack
verdict
