#!/usr/bin/env bash
# Texts of several lines, with quotes and backslashes; two buttons with the same text.
source "$(dirname "$0")/lib.sh"
record names.qml
click 40,415; sees 'LOG two lines'
click 220,420; sees 'LOG separator'
click 390,420; sees 'LOG quotes'
click 210,40; sees 'LOG same'
click 520,420; sees 'LOG picture'
cameBack
verdict
