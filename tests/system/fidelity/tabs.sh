#!/usr/bin/env bash
# A tab bar with tabs that have ids and tabs of a Repeater; the page's button; keys.
# Variants: Basic Fusion Material Universal Imagine
source "$(dirname "$0")/lib.sh"
record
click sent; sees 'LOG tab 1'; pause 0.5
click pages; sees 'LOG Page 1'
click spam; sees 'LOG tab 3'; pause 0.5
click pages; sees 'LOG Page 3'
click drafts; sees 'LOG tab 2'
click inbox; sees 'LOG tab 0'
keys Right; sees 'LOG tab 1'
cameBack
named 'TabButton#sent' '[text="Spam"]' '[text="Drafts"]' '[text="Page 3"]'
notNamed ':nth'
verdict
