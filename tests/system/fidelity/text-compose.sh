#!/usr/bin/env bash
# Accents by dead keys, which an input method commits.
source "$(dirname "$0")/lib.sh"
export QT_IM_MODULE=compose
record texts.qml
click plain; typed 'caf'; keys dead_acute e; typed ' n'; keys dead_tilde n; sees 'NOW plain "café nñ"'
cameBack
verdict
