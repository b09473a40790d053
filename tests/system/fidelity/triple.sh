#!/usr/bin/env bash
# Three quick clicks on an area and in a text.
source "$(dirname "$0")/lib.sh"
record texts.qml
tripleClick area@60,12; sees 'NOW selected first line'
click plain; typed 'end'; sees 'NOW plain'
cameBack
verdict
