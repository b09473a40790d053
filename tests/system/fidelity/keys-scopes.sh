#!/usr/bin/env bash
# Typing into items of one's own inside of delegates, and into a focus scope that the program chose.
source "$(dirname "$0")/lib.sh"
record focus.qml
click 200,60; typed 'bob text'; sees 'NOW lettersBob bob text'
click 200,140; typed 'dan'; sees 'NOW lettersDan dan'
click go; sees 'LOG go'; typed 'found'; sees 'NOW search found'
cameBack
named '[text="Bob"]'
notNamed ':nth'
verdict
