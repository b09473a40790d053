#!/usr/bin/env bash
# Combo boxes: an entry by clicks, by keys and by the wheel, text in an editable one, an entry far down a long list.
# Variants: Basic Fusion Material Universal Imagine
source "$(dirname "$0")/lib.sh"
record
click fruit; sees 'SHOWN opened fruit'
click fruit1; sees 'LOG fruit 1 Pear'
pause 0.4; keys Down; sees 'LOG fruit 2'
click freeText; typed 'Four'; keys Return; sees 'LOG accepted'
click free:0.95,0.5; sees 'SHOWN opened free'
click free2; sees 'LOG free 2 Three'
click many; sees 'SHOWN opened many'
wheel manyList down 6
click manyList; sees 'LOG many [1-9]'
cameBack
named '[text="Pear"]' '#free' '[text="Three"]' '#many'
notNamed ':nth' 'Overlay'
verdict
