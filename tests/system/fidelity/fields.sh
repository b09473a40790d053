#!/usr/bin/env bash
# Text fields and a text area: letters, capitals, correction, Tab, a validator, several lines, selection by keys.
# Variants: Basic Fusion Material Universal Imagine
source "$(dirname "$0")/lib.sh"
needs setxkbmap
setxkbmap de
trap "cleanUp; setxkbmap us" EXIT
record
click user; typed 'Grace Hoper'; sees 'NOW user Grace Hoper'
keys Left Left Left; typed 'p'; sees 'NOW user Grace Hopper'
keys Tab; typed 'pässW0rd'; sees 'NOW password pässW0rd'
keys Return; sees 'LOG accepted'
click number; typed '12x345'; sees 'NOW number 123'
click area; typed 'first line'; keys Return; typed 'second'; sees 'NOW area .*second'
keys shift+Home; sees 'NOW selected second'
cameBack
named 'TextField#user' 'TextField#password' 'TextArea#area'
notNamed ':nth' 'TextInput' 'TextEdit'
has '"pässW0rd"'
verdict
