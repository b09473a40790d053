#!/usr/bin/env bash
# Fields that are no controls, that take no text, that shorten it; a link in a label.
source "$(dirname "$0")/lib.sh"
record texts.qml
click bare; typed 'bare words'; sees 'NOW bare bare words'
click fixed; sees 'LOG fixed pressed'; typed 'x'
click upper; typed 'abcdefgh'; sees 'NOW upper abcde'
click link:0.85,0.5; sees 'LOG link there'
cameBack
named 'TextInput#bare' 'TextField#fixed' 'TextField#upper'
verdict
