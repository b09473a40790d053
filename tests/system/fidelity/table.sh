#!/usr/bin/env bash
# Cells of a table that look alike: texts, check boxes and spin boxes, in rows far down.
source "$(dirname "$0")/lib.sh"
record table.qml
click 420,60; sees 'LOG member'
click 60,20; keys ctrl+a; typed 'Ada'; keys Return; sees 'LOG name 0 Ada'
click 340,100; sees 'LOG age'
wheel 100,200 down 10; sees 'NOW y'
click 420,200; sees 'LOG member'
click 60,260; keys ctrl+a; typed 'Eve'; keys Return; sees 'LOG name'
cameBack
notNamed ':nth'
named '[row='
verdict
