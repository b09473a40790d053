#!/usr/bin/env bash
# Functions that no recording needs: typeText, scrollTo by index and name, longMouseClick for a time.
source "$(dirname "$0")/lib.sh"
record list.qml
click 60,40; sees 'LOG clicked'
stopRecording
list='ApplicationWindow#main ListView#list:visible'
cat >"$out.js" <<SCRIPT
mouseClick("$list ItemDelegate[text=\\"Person 0\\"]");
scrollTo("$list ItemDelegate[text=\\"Person 90\\"]");
mouseClick("$list ItemDelegate[text=\\"Person 90\\"]");
SCRIPT
replay
[ "$replayStatus" = 0 ] || problem "replay gave $replayStatus"
grep -q 'LOG clicked Person 90' "$out.replayed" || problem "the entry far down was not clicked"
came=yes
verdict
