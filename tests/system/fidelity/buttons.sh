#!/usr/bin/env bash
# Every kind of button, each by a click, one by two quick ones, one by a press that lasts.
# Variants: Basic Fusion Material Universal Imagine
source "$(dirname "$0")/lib.sh"
record
click plain; sees 'LOG save'
click toggle; sees 'LOG bold true'
click round; sees 'LOG plus'
click tool; sees 'LOG find'
hold delay 1.2; sees 'LOG erased'
click flat; sees 'LOG skip'
doubleClick highlighted; sees 'LOG next twice'
click repeat; sees 'NOW repeated'
cameBack
named 'Button#plain' 'Button#toggle' 'RoundButton#round' 'ToolButton#tool' 'DelayButton#delay'
notNamed ':nth'
verdict
