#!/usr/bin/env bash
# A modal window; clicks on the blocked one, which do nothing, are told.
source "$(dirname "$0")/lib.sh"
record windows.qml
click openModal; sees 'LOG modal true'
inWindow '^Question$'; click 40,40; sees 'LOG always true'
inWindow '^Scene$'; click plain
inWindow '^Question$'; click 70,100; sees 'LOG modal false'
inWindow '^Scene$'; click plain; sees 'LOG plain'
cameBack
notNamed ':nth' 'QmlImpl'
commented 'block|modal'
verdict
