#!/usr/bin/env bash
# Buttons below an empty item, a gradient, a focus frame, a nine-patch image and a veil over all the window.
source "$(dirname "$0")/lib.sh"
record covers.qml
click underItem; sees 'LOG join'
click underGradient; sees 'LOG shine'
click underFrame; sees 'LOG focus'
click underImage; sees 'LOG pictured'
click underLabel@30,18; typed 'ab'; sees 'NOW text ab'
cameBack
named 'Button#underItem' 'Button#underGradient' 'Button#underFrame' 'Button#underImage' 'TextField#underLabel'
notNamed 'veil' 'emptyItem' 'frame' ':nth'
verdict
