#!/usr/bin/env bash
# Tumblers that wrap and that don't, dragged without being flicked, and turned by keys.
# Variants: Basic Fusion Material Universal Imagine
source "$(dirname "$0")/lib.sh"
record
drag hours:0.5,0.5 hours:0.5,0.12 4 0.6; pause 0.6; sees 'NOW hour'
drag minutes:0.5,0.8 minutes:0.5,0.3 4 0.6; pause 0.6; sees 'NOW minute'
drag names:0.5,0.5 names:0.5,0.28 4 0.6; pause 0.6; sees 'NOW name'
cameBack
notNamed ':nth'
verdict
