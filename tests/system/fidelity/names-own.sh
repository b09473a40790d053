#!/usr/bin/env bash
# What items say of themselves: object name, text, icon, accessible name, tool tip, placeholder, file.
source "$(dirname "$0")/lib.sh"
record names.qml
click 70,40; sees 'LOG by object name'
click 350,40; sees 'LOG by text'
click 460,40; sees 'LOG by icon'; click 520,40; sees 'LOG by other icon'
click 70,100; sees 'LOG by accessible'; click 210,100; sees 'LOG by other accessible'
click 320,100; sees 'LOG by tool tip'; click 380,100; sees 'LOG by other tool tip'
click 460,100; sees 'LOG by icon file'; click 520,100; sees 'LOG by other icon file'
click 80,160; typed 'Ada'; sees 'NOW first Ada'
click 220,160; typed 'Lovelace'; sees 'NOW last Lovelace'
click 360,160; sees 'LOG fixed'
cameBack
named '[objectName="byObjectName"]' '[text="By text"]' '[placeholderText="Last name"]' 'edit-paste' 'Accessible two' 'Tip two' 'two.png'
notNamed ':nth'
verdict
