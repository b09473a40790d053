# Sourced by each scene. A scene is a script NAME.sh that makes real input on a
# program, NAME.qml unless it says otherwise, under `vantle record`, has the
# script replayed in a fresh program, and holds what that did and became
# against what was recorded.
#
# The program says in words what happens, on its standard error:
#   LOG ...          something happened; all of these have to come back in this order
#   NOW key value    what something is now; the last one for each key has to come back
#   PLACE name x y w h   where something lies in its window (see Places.qml)
#
# Exit code 0: it came back. 1: it did not. 3: the scene itself failed, its
# input did nothing, say. 77: what it needs isn't there.
set -u
: "${VANTLE:?has to name the vantle command}"
: "${DISPLAY:?has to be a screen of its own, with a window manager}"
: "${QMLSCENE:=/usr/lib/qt6/bin/qmlscene}"
case ${SCENE_VARIANT:-} in
    Basic | Fusion | Material | Universal | Imagine) export QT_QUICK_CONTROLS_STYLE=$SCENE_VARIANT ;;
    *) export QT_QUICK_CONTROLS_STYLE=${QT_QUICK_CONTROLS_STYLE:-Basic} ;;
esac
export QML_DISABLE_DISK_CACHE=1 QT_LOGGING_RULES="qml.debug=true" QT_MESSAGE_PATTERN='%{message}'
unset QT_IM_MODULE

scenes=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
scene=$(basename "$0" .sh)
# What one row of a scene has of its own: a style, the length of moves.
variant=${SCENE_VARIANT:-}
row=$scene${variant:+@$variant}
: "${OUT:=${TMPDIR:-/tmp}/vantle-fidelity}"
mkdir -p "$OUT"
out=$OUT/$row
export XDG_RUNTIME_DIR=$OUT/runtime
mkdir -p "$XDG_RUNTIME_DIR" && chmod 700 "$XDG_RUNTIME_DIR"
# Settings of the user who runs this are no part of it; nor does one run see those of another.
export XDG_CONFIG_HOME=$out.config XDG_DATA_HOME=$out.data XDG_CACHE_HOME=$OUT/cache

recorder=
replayStatus=
problems=0
# Out of the way: what comes up under the pointer is entered by it.
corner=(1390 990)

trap cleanUp EXIT
cleanUp() { [ -z "$recorder" ] || kill "$recorder" 2>/dev/null; }

# Ends a scene that is itself at fault.
broken() { echo "SCENE BROKEN: $*"; [ -e "$out.recorded" ] && tail -15 "$out.recorded"; exit 3; }
# Ends a scene for which something is missing on this computer.
needs() { command -v "$1" >/dev/null || [ -e "$1" ] || { echo "needs $1"; exit 77; }; }
# For scenes that import Fidelity, the module in helpers/.
needsModule() {
    [ -n "${VANTLE_TEST_QML:-}" ] || { echo "needs the QML module Fidelity, in VANTLE_TEST_QML"; exit 77; }
    export QML2_IMPORT_PATH=$VANTLE_TEST_QML
}
# For scenes with fingers: gives the program a touch screen, see ../touchplayer.
needsTouch() {
    [ -n "${VANTLE_TEST_PLUGINS:-}" ] || { echo "needs the plugin touchplayer, in VANTLE_TEST_PLUGINS"; exit 77; }
    touches=$out.touches
    rm -f "$touches"
    mkfifo "$touches"
    exec 8<>"$touches"
    # The tool adds to these what it needs itself.
    touchScreen=(env QT_QPA_GENERIC_PLUGINS=touchplayer QT_PLUGIN_PATH="$VANTLE_TEST_PLUGINS" TOUCHPLAYER_PIPE="$touches")
}
touchScreen=()
problem() { echo "PROBLEM: $*"; problems=$((problems + 1)); }

# waitFor SECONDS COMMAND...: until the command succeeds; whether it did.
waitFor() {
    local end=$((SECONDS + $1)); shift
    until "$@"; do [ $SECONDS -lt $end ] || return 1; sleep 0.05; done
}

# --- recording -------------------------------------------------------------

# record [FILE.qml | PROGRAM...]: starts the program of the scene, and finds its window "Scene".
record() {
    case ${1:-} in
        '') program=("$QMLSCENE" "$scenes/$scene.qml") ;;
        *.qml) program=("$QMLSCENE" "$scenes/$1") ;;
        *) program=("$@") ;;
    esac
    rm -rf "$out".{js,replayed.js,recorded,replayed,html,xml,difference,config,data} "$out".*.json "$out".*.state
    xdotool mousemove "${corner[@]}"
    # shellcheck disable=SC2086  # options are words
    "${touchScreen[@]}" "$VANTLE" record ${recordOptions:-} -o "$out.js" --tree "$out.recorded.json" -- "${program[@]}" >"$out.recorded" 2>&1 &
    recorder=$!
    inWindow "${windowTitle:-^Scene$}"
    waitFor 3 isActive
    [ -n "${windowTitle:-}" ] || waitFor 20 grep -q '^READY' "$out.recorded"|| broken "the program is never ready"
    sleep 0.3
    locate
}
said() { tail -n +$((seen + 1)) "$out.recorded" | grep -nE -m1 -- "$1" >"$out.said"; }

# inWindow TITLE: coordinates and places are in that window from now on.
inWindow() {
    waitFor 20 findWindow "$1" || broken "no window with the title $1"
    # Until the window manager has given it a frame and a place.
    waitFor 10 isFramed
    local before=
    for _ in $(seq 40); do
        locate
        [ "$before" = "$windowX,$windowY" ] && break
        before=$windowX,$windowY
        sleep 0.2
    done
}
isActive() { [ "$(xdotool getactivewindow 2>/dev/null)" = "$window" ]; }
isFramed() { xprop -id "$window" _NET_FRAME_EXTENTS 2>/dev/null | grep -q '='; }
findWindow() { window=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -1); [ -n "$window" ]; }
locate() {
    read -r windowX windowY < <(xwininfo -id "$window" 2>/dev/null | awk '/Absolute upper-left/ { printf "%s ", $NF }')
}

# sees REGEX [SECONDS]: waits until the program has said that, behind what was
# seen last. Everything that a scene does should show, and what nobody has
# seen has missed.
sees() {
    waitFor "${2:-8}" said "$1" || broken "input did nothing: no line fits \"$1\""
    seen=$((seen + $(cut -d: -f1 "$out.said")))
}
seen=0

# --- places ----------------------------------------------------------------

# at PLACE: sets X and Y on the screen. A place is one of
#   40,30             pixels in the window
#   name              the middle of what the program has called so
#   name:0.9,0.5      parts of its width and height
#   name@12,-3        pixels from its upper left corner
at() {
    local name x y w h
    case $1 in
        [0-9-]*,*) X=$((windowX + ${1%,*})) Y=$((windowY + ${1#*,})); return ;;
    esac
    name=${1%%[:@]*}
    waitFor 8 grep -q "^PLACE $name " "$out.recorded" || broken "the program never said where $name is"
    read -r x y w h < <(grep -E "^PLACE $name " "$out.recorded" | tail -1 | cut -d' ' -f3-)
    case $1 in
        *:*) set -- "${1#*:}"; read -r X Y < <(awk "BEGIN { printf \"%d %d\", $x + $w * ${1%,*}, $y + $h * ${1#*,} }") ;;
        *@*) set -- "${1#*@}"; X=$((x + ${1%,*})) Y=$((y + ${1#*,})) ;;
        *) X=$((x + w / 2)) Y=$((y + h / 2)) ;;
    esac
    X=$((windowX + X)) Y=$((windowY + Y))
}

# --- input -----------------------------------------------------------------
# Pauses are part of the input: a hand needs them, and so do the rules by
# which two clicks are a double click.

pause() { sleep "$1"; }
# A click in the same place as another, and no double click, comes so much later.
apart() { sleep 0.9; }
point() { at "$1"; xdotool mousemove "$X" "$Y"; sleep 0.1; }
click() { point "$1"; xdotool click "${2:-1}"; sleep 0.45; }
doubleClick() { point "$1"; xdotool click --repeat 2 --delay 70 "${2:-1}"; sleep 0.6; }
tripleClick() { point "$1"; xdotool click --repeat 3 --delay 70 1; sleep 0.8; }
press() { point "$1"; xdotool mousedown "${2:-1}"; sleep 0.1; }
release() { xdotool mouseup "${1:-1}"; sleep 0.45; }
# hold PLACE SECONDS [BUTTON]: presses, stays, lets go.
hold() { press "$1" "${3:-1}"; sleep "$2"; release "${3:-1}"; }
# withKey KEY COMMAND...: the command while a modifier key is down.
withKey() { xdotool keydown "$1"; sleep 0.05; "${@:2}"; xdotool keyup "$1"; sleep 0.1; }

# glide PLACE [PIXELS]: moves there in steps of so many pixels.
glide() {
    local x y
    at "$1"
    eval "$(xdotool getmouselocation --shell | sed 's/^\([XY]\)=/local from\1=/;/WINDOW\|SCREEN/d')"
    x=$((X - fromX)) y=$((Y - fromY))
    # shellcheck disable=SC2046  # words
    xdotool $(awk -v x=$x -v y=$y -v step="${2:-10}" -v pause="${3:-0.012}" "BEGIN {
        way = sqrt(x * x + y * y)
        for (gone = step; gone < way; gone += step)
            printf \"mousemove %d %d sleep %s \", $fromX + x * gone / way, $fromY + y * gone / way, pause
        printf \"mousemove %d %d sleep %s\", $X, $Y, pause }")
}
# drag FROM TO [PIXELS [REST]]: with the left button, in moves of so many pixels
# (8); the pointer rests (0.3 s) before the button is let go.
drag() {
    press "$1"
    glide "$2" "${3:-8}"
    sleep "${4:-0.3}"
    release
}
# flick FROM TO: quickly, and let go on the way.
flick() { press "$1"; glide "$2" "${3:-25}"; xdotool mouseup 1; sleep 1.5; }

# wheel PLACE up|down|left|right [NOTCHES]
wheel() {
    local button
    case $2 in up) button=4 ;; down) button=5 ;; left) button=6 ;; right) button=7 ;; esac
    point "$1"
    xdotool click --repeat "${3:-1}" --delay 60 "$button"
    sleep 0.8
}
# What the keyboard has no key for, xdotool has to put on one
# first, and programs take a while to learn of that.
keys() { xdotool key --delay 80 "$@"; sleep 0.4; }
typed() { xdotool type --delay "${2:-50}" -- "$1"; sleep 0.5; }

# Fingers, in pixels of the window: touch "1:down:20:30 2:down:80:30"
touch() { echo "$1" >&8; sleep 0.02; }
# Where a place is in the window, as X:Y.
within() { at "$1"; echo "$((X - windowX)):$((Y - windowY))"; }
tap() { touch "1:down:$(within "$1")"; touch "1:up:$(within "$1")"; sleep 0.5; }
# swipe FROM TO [STEPS]: one finger, which rests before it leaves.
swipe() {
    local i from to steps=${3:-12}
    at "$1"; from=($((X - windowX)) $((Y - windowY)))
    at "$2"; to=($((X - windowX)) $((Y - windowY)))
    touch "1:down:${from[0]}:${from[1]}"
    for i in $(seq "$steps"); do
        touch "1:move:$((from[0] + (to[0] - from[0]) * i / steps)):$((from[1] + (to[1] - from[1]) * i / steps))"
    done
    sleep "${4:-0.4}"
    touch "1:up:${to[0]}:${to[1]}"
    sleep 0.6
}
typedSlowly() { typed "$1" 400; }
# holdKey KEY SECONDS: long enough for the auto-repeat of the X server.
holdKey() { xdotool keydown "$1"; sleep "$2"; xdotool keyup "$1"; sleep 0.4; }

# --- what came back --------------------------------------------------------

# state FILE: what the program did and became.
state() {
    grep -E '^LOG ' "$1"
    grep -E '^NOW ' "$1" | awk '{ last[$2] = $0 } END { for (key in last) print last[key] }' | sort
}

# Ends the recording, unless the program has ended it.
stopRecording() {
    sleep 0.6
    kill -INT "$recorder" 2>/dev/null
    wait "$recorder"
    recordStatus=$?
    recorder=
    state "$out.recorded" >"$out.recorded.state"
    echo "--- script (record gave $recordStatus)"
    cat "$out.js"
    [ -s "$out.recorded.state" ] || broken "the program said nothing: did the input do anything?"
}

# replay [OPTIONS]: in a fresh program. What the last statement set off may take
# its time, unless it ends the program (ends=1).
replay() {
    xdotool mousemove "${corner[@]}"
    { cat "$out.js"; [ -n "${ends:-}" ] || echo 'snooze(1.2);'; } >"$out.replayed.js"
    rm -rf "$out".{config,data}
    # Of a program that the script ends there are no objects.
    [ -n "${ends:-}" ] || set -- --tree "$out.replayed.json" "$@"
    "$VANTLE" replay --timeout "${replayTimeout:-6}" --junit "$out.xml" "$@" "$out.replayed.js" -- "${program[@]}" >"$out.replayed.output" 2>&1
    replayStatus=$?
    # What the program prints stands in the results.
    python3 - "$out.xml" >"$out.replayed" 2>/dev/null <<'PYTHON'
import sys, xml.etree.ElementTree as tree
for element in tree.parse(sys.argv[1]).iter():
    if element.tag in ("system-out", "system-err") and element.text:
        print(element.text)
PYTHON
    state "$out.replayed" >"$out.replayed.state"
    echo "--- replay gave $replayStatus"
    grep -vE '^(LOG|NOW|PLACE|READY)' "$out.replayed.output" | tail -25
}

# cameBack: stops, replays and compares.
cameBack() {
    stopRecording
    replay "$@"
    same
}
same() {
    [ "$replayStatus" = "${expectedStatus:-0}" ] || problem "replay gave $replayStatus instead of ${expectedStatus:-0}"
    if diff "$out.recorded.state" "$out.replayed.state" >"$out.difference"; then
        came=yes
        echo "--- same: $(wc -l <"$out.recorded.state") lines"
    else
        problem "another state (<: recorded, >: replayed)"
        cat "$out.difference"
    fi
}
came=no

# --- what the script says --------------------------------------------------

# named TEXT...: a name or part of one, as one would write it in a name, stands in the script.
named() {
    local text
    for text; do
        grep -v '^//' "$out.js" | grep -qF -- "${text//\"/\\\"}" || problem "the script does not name: $text"
    done
}
notNamed() {
    local text
    for text; do
        ! grep -v '^//' "$out.js" | grep -F -- "${text//\"/\\\"}" || problem "the script names: $text"
    done
}
# A comment that fits stands in the script.
commented() {
    grep -E '^ *//' "$out.js" | grep -vE 'Recorded by|Program:|The recording was stopped|The program ended' |
        grep -qiE -- "$1" || problem "no comment in the script fits: $1"
}
# The script calls these functions, in this order, and no other.
calls() {
    local found
    found=$(grep -oE '^[A-Za-z]+\(' "$out.js" | tr -d '(' | grep -vx snooze | tr '\n' ' ')
    [ "$found" = "$* " ] || problem "the script calls ${found:-nothing} instead of $*"
}
has() { grep -vE '^ *//' "$out.js" | grep -qF -- "$1" || problem "the script has no: $1"; }

# The last line of each scene.
verdict() {
    local statements nth
    statements=$(grep -cE '^[A-Za-z]+\(' "$out.js")
    nth=$(grep -E '^[A-Za-z]+\(' "$out.js" | grep -c ':nth')
    echo "ROW|$row|$statements|$came|$nth|$problems"
    [ $problems = 0 ]
    exit
}
