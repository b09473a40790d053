#!/usr/bin/env bash
# Buttons below a MouseArea that declines the press, one that only hovers, one that is disabled, and below handlers that take nothing.
source "$(dirname "$0")/lib.sh"
record covers.qml
click underDeclining; sees 'LOG through'
click underHover; sees 'LOG hovered'
click underDisabled; sees 'LOG enabled'
click underHandler; sees 'LOG handled'
cameBack
named 'Button#underDeclining' 'Button#underHover' 'Button#underDisabled' 'Button#underHandler'
notNamed 'MouseArea' 'veil'
verdict
