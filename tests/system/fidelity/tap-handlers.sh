#!/usr/bin/env bash
# TapHandlers of all policies: taps, double taps, long presses, the right button, with Ctrl.
source "$(dirname "$0")/lib.sh"
record handlers.qml
click tap; sees 'LOG tapped 1 1'
click tap@20,20 3; sees 'LOG tapped 1 2'
apart; doubleClick tap; sees 'LOG tapped 2'
apart; hold tap 1.3; sees 'LOG long pressed'
click exclusive; sees 'LOG exclusive tapped'
click within; sees 'LOG within tapped'
withKey ctrl click modified; sees 'LOG with control'
apart; click modified; sees 'LOG without control'
cameBack
named 'Field#tap' 'Field#exclusive' 'Field#within' 'Field#modified'
verdict
