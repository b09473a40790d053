#!/usr/bin/env bash
# Controls of a form with labels beside them, one after the other by mouse and keys.
# Variants: Basic Fusion Material Universal Imagine
source "$(dirname "$0")/lib.sh"
record inputs.qml
click name; typed 'Ada'; sees 'NOW name Ada'
keys Tab; typed 'London'; sees 'NOW town London'
click box; sees 'NOW member true'
click ok; sees 'LOG ok'
cameBack
named '#ok'
notNamed ':nth'
verdict
