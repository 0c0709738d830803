#!/usr/bin/env bash
# Runs a Windows program under Wine with the project's fixed 32-bit prefix.
export WINEPREFIX="${VV_WINEPREFIX:-$HOME/.cache/vantaview/wine32}"
export WINEARCH=win32
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=}"
exec wine "$@"
