#!/usr/bin/env bash
# Pages of a stack view that are all of the same kind.
source "$(dirname "$0")/lib.sh"
record stack.qml
click 230,200; sees 'NOW depth 2'; pause 0.8
click 230,200; sees 'NOW depth 3'; pause 0.8
click 20,20; sees 'NOW depth 2'; pause 0.8
click 230,200; sees 'NOW depth 3'; pause 0.8
cameBack
notNamed ':nth'
verdict
