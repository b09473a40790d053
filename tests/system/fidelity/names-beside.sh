#!/usr/bin/env bash
# What stands beside or around: labels, texts inside, frames and groups with names.
source "$(dirname "$0")/lib.sh"
record names.qml
click 160,215; typed 'Main'; sees 'NOW street Main'
click 160,255; typed 'London'; sees 'NOW town London'
click 360,240; sees 'LOG north'; click 500,240; sees 'LOG south'
click 70,330; sees 'LOG inside one'; click 220,330; sees 'LOG inside two'
click 335,345; sees 'LOG group one'; click 475,345; sees 'LOG group two'
cameBack
notNamed ':nth'
named 'Town' 'south'
verdict
