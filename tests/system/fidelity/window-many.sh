#!/usr/bin/env bash
# Several windows of the same kind, which differ in their titles.
source "$(dirname "$0")/lib.sh"
record windows.qml
click openMore; inWindow '^Note 1$'
inWindow '^Scene$'; apart; click openMore; inWindow '^Note 2$'
click 70,40; sees 'LOG note closed 2'
inWindow '^Note 1$'; click 70,40; sees 'LOG note closed 1'
cameBack
named '[title="Note 2"]' '[title="Note 1"]'
verdict
