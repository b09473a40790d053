#!/usr/bin/env bash
# The third letter of a text makes the program abort.
source "$(dirname "$0")/lib.sh"
needsModule
ends=1 expectedStatus=2
record crashes.qml
click third; typed 'abc'; pause 1
sees 'LOG letters 3'
cameBack
# In one statement or in three.
[ "$(sed -n 's/^type(.*, "\(.*\)");$/\1/p' "$out.js" | tr -d '\n')" = abc ] || problem "the script does not type abc"
verdict
