#!/usr/bin/env bash
# Letters with accents, Greek, Cyrillic and Chinese, in one go.
source "$(dirname "$0")/lib.sh"
record texts.qml
click plain; typed 'äöü ñandú Ωμέγα'; sees 'NOW plain "äöü ñandú Ωμέγα"'
keys End; typed ' привет 你好'; sees 'NOW plain .*你好'
cameBack
has '"äöü ñandú Ωμέγα"'
verdict
