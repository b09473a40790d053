#!/usr/bin/env bash
# Double clicks, two single clicks that are apart, and three quick ones.
source "$(dirname "$0")/lib.sh"
record areas.qml
doubleClick twice; sees 'LOG twice'
apart; click twice; sees 'LOG once'
apart; click twice; sees 'LOG once'
apart; doubleClick twice; sees 'LOG twice'
cameBack
verdict
