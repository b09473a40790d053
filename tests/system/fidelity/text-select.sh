#!/usr/bin/env bash
# Words by double clicks, ranges by drags and Shift, cut, copied, pasted and undone.
source "$(dirname "$0")/lib.sh"
record texts.qml
doubleClick other@20,20; sees 'NOW selected some'
keys ctrl+x; sees 'NOW other  ?words'
keys End; keys ctrl+v; sees 'NOW other .*some'
drag area@8,16 area@200,38; sees 'NOW selected'
keys Delete; sees 'NOW area'
keys ctrl+z; sees 'NOW area'
click area@8,16; withKey shift click area@60,16; sees 'NOW selected'
typed 'X'; sees 'NOW area'
cameBack
verdict
