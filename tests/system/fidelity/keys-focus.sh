#!/usr/bin/env bash
# The focus by Tab and back, a button by Space, a field by keys alone.
source "$(dirname "$0")/lib.sh"
record keyboard.qml
keys Tab; typed 'by keys'; sees 'NOW field by keys'
keys Tab; keys space; sees 'LOG button'
keys shift+Tab; keys ctrl+a; typed 'x'; sees 'NOW field x'
cameBack
verdict
