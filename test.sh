#!/usr/bin/env bash
# Sets up what is missing, builds every tree and runs every suite: native,
# native under AddressSanitizer + UBSan, a fuzz smoke of every target, and the
# Windows suites under Wine (with a virtual X display for the dialogs).
set -uo pipefail
cd "$(dirname "$0")"
scripts/setup.sh || exit 1
scripts/build.sh all || exit 1

passed=0; failed=0; status=0
suite() {  # name, command...
  local name=$1; shift
  echo "== $name"
  local log; log=$(mktemp)
  "$@" 2>&1 | tee "$log"
  local rc=${PIPESTATUS[0]}
  local line; line=$(grep -E 'tests passed, [0-9]+ tests failed out of [0-9]+' "$log" | tail -n 1)
  local total=$(sed -E 's/.* out of ([0-9]+).*/\1/' <<<"$line")
  local bad=$(sed -E 's/.*passed, ([0-9]+) tests failed.*/\1/' <<<"$line")
  if [ -n "$line" ]; then passed=$((passed + total - bad)); failed=$((failed + bad)); fi
  [ "$rc" -ne 0 ] && status=1
  rm -f "$log"
}

export VV_WINEPREFIX="${VV_WINEPREFIX:-$HOME/.cache/vantaview/wine32}"
export VV_WINEPREFIX64="${VV_WINEPREFIX64:-$HOME/.cache/vantaview/wine64}"
# The dialogs are drawn and photographed on a true-colour virtual display.
xvfb=(xvfb-run -a -s "-screen 0 1280x1024x24")
suite "native" ctest --test-dir build/native --output-on-failure
suite "sanitizers and fuzz smoke" ctest --test-dir build/sanitize --output-on-failure
if scripts/can-run-32bit.sh; then
  suite "windows (wine)" "${xvfb[@]}" ctest --test-dir build/win32 --output-on-failure
  WINEPREFIX="$VV_WINEPREFIX" wineserver -k 2>/dev/null || true
else
  echo "== this machine cannot execute 32-bit programs: the Windows suites run from the 64-bit build"
  suite "windows: the 32-bit Metadata.dll" ctest --test-dir build/win32 -R dll_exports_and_imports --output-on-failure
  suite "windows (64-bit wine)" "${xvfb[@]}" ctest --test-dir build/win64 -E dll_exports_and_imports --output-on-failure
  WINEPREFIX="$VV_WINEPREFIX64" /usr/lib/wine/wineserver64 -k 2>/dev/null || true
fi

echo "== all suites"
echo "Vantaview: $passed passed, $failed failed"
exit $status
