#!/usr/bin/env bash
# Delegates outside of views: plain, check, radio, switch, and one that is swiped open.
# Variants: Basic Fusion Material Universal Imagine
source "$(dirname "$0")/lib.sh"
record
click item; sees 'LOG plain'
click check; sees 'LOG check true'
click radioTwo; sees 'LOG two true'
click toggle; sees 'LOG switch true'
drag swipe:0.8,0.5 swipe:0.1,0.5; sees 'LOG opened true'; pause 0.4
click remove; sees 'LOG delete'; pause 0.4
click swipe:0.2,0.5; sees 'LOG swipe clicked'
cameBack
named 'ItemDelegate#item' 'CheckDelegate#check' 'RadioDelegate#radioTwo' 'SwitchDelegate#toggle' 'SwipeDelegate#swipe' 'Button#remove'
notNamed ':nth'
verdict
