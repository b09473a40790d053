#!/usr/bin/env bash
# The cursor set by clicks and keys, corrections in the middle, words deleted.
source "$(dirname "$0")/lib.sh"
record texts.qml
click plain; typed 'The quick brwn fox'; keys Left Left Left Left Left Left; typed 'o'; sees 'NOW plain "The quick brown fox"'
keys Home; keys ctrl+Right; typed 'very '; sees 'NOW plain "The very quick'
keys ctrl+BackSpace; sees 'NOW plain "The quick'
click plain@14,20; typed '_'; sees 'NOW plain'
cameBack
verdict
