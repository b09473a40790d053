#!/usr/bin/env bash
# Letters with accents typed in one go, and Greek, Cyrillic and Chinese ones.
source "$(dirname "$0")/lib.sh"
needs setxkbmap
setxkbmap de
trap "cleanUp; setxkbmap us" EXIT
record texts.qml
click plain; typed 'äöü Größe'; sees 'NOW plain "äöü Größe"'
click bare; typedSlowly 'Ωμé 你好'; sees 'NOW bare Ωμé 你好'
cameBack
has '"äöü Größe"'
verdict
