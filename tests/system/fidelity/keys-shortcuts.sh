#!/usr/bin/env bash
# Shortcuts of one key and of two, with and without modifiers, and from inside of a text field.
source "$(dirname "$0")/lib.sh"
record keyboard.qml
keys ctrl+s; sees 'LOG save'
keys F5; sees 'LOG refresh'
keys ctrl+k ctrl+b; sees 'LOG two keys'
keys ctrl+shift+p; sees 'LOG palette'
keys g i; sees 'LOG go to inbox'
click field; keys ctrl+s; sees 'LOG save'
cameBack
verdict
