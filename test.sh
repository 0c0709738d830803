#!/usr/bin/env bash
# Sets up what is missing, builds every tree and runs every suite: native,
# native under AddressSanitizer + UBSan, a fuzz smoke of every target, and the
# Windows suites under Wine (with a virtual X display for the dialogs).
#   ./test.sh [native] [sanitize] [windows]   (default: all three)
# Closes with the count of suites passed, failed and skipped, and for each
# skipped one which cases were skipped and why.
set -uo pipefail
cd "$(dirname "$0")"
parts=" ${*:-native sanitize windows} "
trees=()
for part in $parts; do
  case $part in
    native|sanitize) trees+=("$part") ;;
    windows) trees+=(win32); scripts/can-run-32bit.sh || trees+=(win64) ;;
    *) echo "test.sh: unknown part '$part' (native, sanitize, windows)" >&2; exit 2 ;;
  esac
done
scripts/setup.sh || exit 1
scripts/build.sh "${trees[@]}" || exit 1

passed=0; failed=0; skipped=0; status=0; why=()
suite() {  # name, build tree, command...
  local name=$1 tree=$2; shift 2
  echo "== $name"
  local log; log=$(mktemp)
  "$@" 2>&1 | tee "$log"
  local rc=${PIPESTATUS[0]}
  local line; line=$(grep -E 'tests passed, [0-9]+ tests failed out of [0-9]+' "$log" | tail -n 1)
  local total=$(sed -E 's/.* out of ([0-9]+).*/\1/' <<<"$line")
  local bad=$(sed -E 's/.*passed, ([0-9]+) tests failed.*/\1/' <<<"$line")
  # ctest counts a skipped test among the passed ones; it lists them apart.
  local skips; skips=$(sed -nE 's/^\s+[0-9]+ - (\S+) \(Skipped\)$/\1/p' "$log")
  local nskip; nskip=$(grep -c . <<<"$skips")
  if [ -n "$line" ]; then
    passed=$((passed + total - bad - nskip)); failed=$((failed + bad)); skipped=$((skipped + nskip))
  fi
  # Each skipped test: how many of its cases were skipped, and why (the line
  # after GoogleTest's "file:line: Skipped", or the fuzz replay's own).
  if [ "$nskip" -gt 0 ]; then
    mapfile -t -O "${#why[@]}" why < <(awk -v want=" $(tr '\n' ' ' <<<"$skips")" -v tree="$name" '
      /^[0-9]+\/[0-9]+ Test: / { test = $3; n = ""; reasons = ""; next }
      index(want, " " test " ") == 0 { next }
      /: Skipped$/ { getline r; if (index(reasons, r) == 0) reasons = reasons (reasons == "" ? "" : "; ") r; next }
      /^[0-9]+ of [0-9]+ tests skipped: exit code/ { n = $1 " of " $3 " cases: " }
      /^<end of output>$/ { print "  " tree ": " test ": " n reasons }
    ' "$tree/Testing/Temporary/LastTest.log")
  fi
  [ "$rc" -ne 0 ] && status=1
  rm -f "$log"
}

export VV_WINEPREFIX="${VV_WINEPREFIX:-$HOME/.cache/vantaview/wine32}"
export VV_WINEPREFIX64="${VV_WINEPREFIX64:-$HOME/.cache/vantaview/wine64}"
# The dialogs are drawn and photographed on a true-colour virtual display.
xvfb=(xvfb-run -a -s "-screen 0 1280x1024x24")
[[ $parts == *" native "* ]] && suite "native" build/native ctest --test-dir build/native --output-on-failure
[[ $parts == *" sanitize "* ]] &&
  suite "sanitizers and fuzz smoke" build/sanitize ctest --test-dir build/sanitize --output-on-failure
if [[ $parts != *" windows "* ]]; then
  :
elif scripts/can-run-32bit.sh; then
  suite "windows (wine)" build/win32 "${xvfb[@]}" ctest --test-dir build/win32 --output-on-failure
  WINEPREFIX="$VV_WINEPREFIX" wineserver -k 2>/dev/null || true
else
  echo "== this machine cannot execute 32-bit programs: the Windows suites run from the 64-bit build"
  suite "windows: the 32-bit Metadata.dll" build/win32 ctest --test-dir build/win32 -R dll_exports_and_imports --output-on-failure
  suite "windows (64-bit wine)" build/win64 "${xvfb[@]}" ctest --test-dir build/win64 -E dll_exports_and_imports --output-on-failure
  WINEPREFIX="$VV_WINEPREFIX64" /usr/lib/wine/wineserver64 -k 2>/dev/null || true
fi

echo "== all suites"
echo "Vantaview: $passed passed, $failed failed, $skipped skipped"
[ "$skipped" -gt 0 ] && printf '%s\n' "skipped, and why:" "${why[@]}"
exit $status
