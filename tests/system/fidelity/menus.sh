#!/usr/bin/env bash
# A menu bar by clicks, with a submenu that opens on hover; a context menu, with one that is clicked open.
# Variants: Basic Fusion Material Universal Imagine
source "$(dirname "$0")/lib.sh"
record
click file; sees 'SHOWN file opened'
click new; sees 'LOG &New'; pause 0.3
click file; sees 'SHOWN file opened'
glide recent; sees 'SHOWN recent opened'; pause 0.3
glide letter; click letter; sees 'LOG Letter'; pause 0.3
click edit; sees 'SHOWN edit opened'
click copy; sees 'LOG &Copy'; pause 0.3
click file; sees 'SHOWN file opened'
click wrap; sees 'LOG &Wrap true'; pause 0.3
click area 3; sees 'SHOWN context opened'
click cut; sees 'LOG Cut out'; pause 0.3
click area 3; sees 'SHOWN context opened'
click more; sees 'SHOWN more opened'; pause 0.3
click deep; sees 'LOG Deep'
cameBack
named '#letter' 'MouseArea#area'
notNamed ':nth' 'Overlay'
verdict
