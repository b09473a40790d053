#!/usr/bin/env bash
# A submenu that opens when the pointer rests on its entry.
source "$(dirname "$0")/lib.sh"
record hovers.qml
click file; sees 'SHOWN file'
glide recent; sees 'SHOWN recent'
glide recent:0.95,0.5; glide letter; pause 0.3; click letter; sees 'LOG letter'
cameBack
named '[text="Letter"]'
has 'mouseMove('
verdict
