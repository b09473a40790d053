#!/usr/bin/env bash
# Presses that are held: just long enough, and more than two seconds for an area that asks for it.
source "$(dirname "$0")/lib.sh"
record areas.qml
hold held 1.2; sees 'LOG let go'
click held; sees 'LOG short'
apart; hold slow 2.8; sees 'LOG held slowly'
cameBack
verdict
