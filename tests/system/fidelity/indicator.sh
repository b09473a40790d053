#!/usr/bin/env bash
# A page indicator with dots that are clicked.
source "$(dirname "$0")/lib.sh"
record pages.qml
click dots:0.9,0.5; sees 'NOW page 3'; pause 0.8
click swipe; sees 'LOG On page 3'
click dots:0.4,0.5; sees 'NOW page 1'; pause 0.8
click swipe; sees 'LOG On page 1'
cameBack
named 'PageIndicator#dots'
verdict
