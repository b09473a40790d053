#!/usr/bin/env bash
# An application's usual layout: two split views in each other, a filter, a list in a scroll view, notes.
source "$(dirname "$0")/lib.sh"
record layout.qml
click bottom@40,40; sees 'LOG run'
click left@60,25; typed 'abc'; sees 'NOW filter abc'
click files@60,60; sees 'LOG file'
wheel files down 3; click files@60,80; sees 'LOG file'
drag left@203,300 left@283,300 6; sees 'NOW left'
drag top@150,203 top@150,263 6; sees 'NOW top'
click top@150,60; typed 'note'; sees 'NOW notes note'
cameBack
notNamed ':nth'
verdict
