#!/usr/bin/env bash
# Runs a Windows program under Wine with the project's fixed prefixes: 32-bit
# programs in a win32 prefix, 64-bit ones (the Windows suites on machines that
# cannot run 32-bit programs) in a win64 prefix. With VV_WINE_DPI set, the
# program sees a screen of that DPI: the prefix's setting is changed for the
# run and set back to 96 after it (so runs in one prefix must not overlap).
cache="$HOME/.cache/vantaview"
machine=""
if [ -f "${1:-}" ]; then  # the PE header's machine field: 8664 for x86-64
  pe=$(od -An -tu4 -j60 -N4 "$1" 2>/dev/null | tr -d ' ')
  [ -n "$pe" ] && machine=$(od -An -tx2 -j$((pe + 4)) -N2 "$1" 2>/dev/null | tr -d ' ')
fi
if [ "$machine" = 8664 ]; then
  export WINEPREFIX="${VV_WINEPREFIX64:-$cache/wine64}"
  export WINEARCH=win64
  wine=/usr/lib/wine/wine64
else
  export WINEPREFIX="${VV_WINEPREFIX:-$cache/wine32}"
  export WINEARCH=win32
  wine=wine
fi
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=}"
# Now and then a program under Wine ends at once, with exit 1 and not a word
# printed (the wineserver going away between two programs, it seems). A
# program that fails without printing anything is run once more; its output
# is held until it ends so that a retry does not print twice.
out=$(mktemp) err=$(mktemp)
trap 'rm -f "$out" "$err"' EXIT
dpi_key='HKCU\Control Panel\Desktop'
if [ -n "${VV_WINE_DPI:-}" ]; then
  "$wine" reg add "$dpi_key" /v LogPixels /t REG_DWORD /d "$VV_WINE_DPI" /f >/dev/null 2>&1
  trap 'rm -f "$out" "$err"; "$wine" reg add "$dpi_key" /v LogPixels /t REG_DWORD /d 96 /f >/dev/null 2>&1' EXIT
fi
for attempt in 1 2; do
  "$wine" "$@" >"$out" 2>"$err"
  rc=$?
  if [ "$rc" -eq 0 ] || [ -s "$out" ] || [ -s "$err" ] || [ "$attempt" -eq 2 ]; then break; fi
  echo "wine-run.sh: $1 ended with exit $rc before printing anything; running it once more" >&2
done
cat "$out"
cat "$err" >&2
exit "$rc"
