#!/usr/bin/env bash
# A second window: clicks and text in it, back in the first, closed by its own button.
source "$(dirname "$0")/lib.sh"
record windows.qml
click openTools; sees 'LOG tools true'
inWindow '^Tools'; click 70,40; sees 'LOG hammer'
click 100,100; typed '12'; sees 'NOW size text 12'
inWindow '^Scene$'; click plain; sees 'LOG plain'
inWindow '^Tools'; click 70,160; sees 'LOG tools false'
cameBack
named 'Window#tools ' 'Button[text="Hammer"]'
notNamed ':nth' '_QML' 'QmlImpl'
verdict
