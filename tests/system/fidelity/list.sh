#!/usr/bin/env bash
# Entries of a list by their texts, buttons in entries, entries that go away, keys, after the wheel with entries that are reused.
source "$(dirname "$0")/lib.sh"
record list.qml
click 60,40; sees 'LOG clicked'
click 230,80; sees 'LOG drop'
apart; click 230,80; sees 'LOG drop'
wheel 100,200 down 12; click 60,200; sees 'LOG clicked'
click 230,200; sees 'LOG drop'
keys Down Down Down; sees 'NOW current'
wheel 100,200 up 5; click 60,120; sees 'LOG clicked'
cameBack
notNamed ':nth'
verdict
