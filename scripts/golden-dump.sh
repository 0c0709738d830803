#!/usr/bin/env bash
# Prints every reading export's answer for every file of the corpus (and the
# demo files, when built) into one text file, so that two builds can be
# compared byte for byte:
#   scripts/golden-dump.sh native [OUT]   the native vvmeta
#   scripts/golden-dump.sh dll [OUT]      vvmeta.exe and its Metadata.dll under
#                                         Wine: the win32 tree, or win64 where
#                                         32-bit programs cannot run
# It builds the tree it needs first. OUT defaults to build/golden-<kind>.txt.
# The corpus is the native tree's VV_CORPUS_DIR (scripts/build.sh passes
# $VV_CORPUS_DIR). Compare with cmp or diff -u.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${VV_BUILD_ROOT:-$root/build}
kind=${1:-native}
out=${2:-$build/golden-$kind.txt}

case $kind in
  native)
    "$root/scripts/build.sh" native >/dev/null || exit 1
    vvmeta=("$build/native/bin/vvmeta")
    winpath() { printf '%s' "$1"; } ;;
  dll)
    tree=win32
    "$root/scripts/can-run-32bit.sh" || tree=win64
    "$root/scripts/build.sh" native "$tree" >/dev/null || exit 1
    # Prefixes of their own: a wineserver started here, without a display,
    # would leave the Windows suites' dialogs without a desktop if they ran
    # at the same time in the shared prefix.
    export VV_WINEPREFIX="${VV_WINEPREFIX:-$HOME/.cache/vantaview/wine32-golden}"
    export VV_WINEPREFIX64="${VV_WINEPREFIX64:-$HOME/.cache/vantaview/wine64-golden}"
    vvmeta=("$root/scripts/wine-run.sh" "$build/$tree/bin/vvmeta.exe")
    "${vvmeta[@]}" info >/dev/null 2>&1  # a new prefix announces itself on first use
    # Wine takes DOS paths; drive Z: is the root of the Unix file system.
    winpath() { printf 'Z:%s' "${1//\//\\}"; } ;;
  *) echo "golden-dump.sh: native or dll" >&2; exit 2 ;;
esac
corpus=$(sed -n 's/^VV_CORPUS_DIR:PATH=//p' "$build/native/CMakeCache.txt")
[ -d "$corpus" ] || echo "golden-dump.sh: no corpus folder $corpus (set VV_CORPUS_DIR): the demo files only" >&2

files=("$corpus"/*)
[ -d "$build/native/demo" ] && files+=("$build"/native/demo/*)

run() {  # label, vvmeta arguments...
  local label=$1; shift
  printf '== %s\n' "$label"
  { "${vvmeta[@]}" "$@" 2>&1; printf '\n== exit %s\n' "$?"; } | tr -d '\r'
}

{
  for f in "${files[@]}"; do
    [ -f "$f" ] || continue
    p=$(winpath "$f")
    printf '######## %s\n' "$(basename "$f")"
    run show show "$p"
    for m in 1 2 3; do run "exif $m" exif --mode "$m" "$p"; done
    run "exif 3 16384" exif --mode 3 --capacity 16384 "$p"
    run exifinfo exifinfo "$p"
    for c in 3 115 118; do run "exifinfo $c" exifinfo --format "$c" "$p"; done
    run "tag 499" tag 499 "$p"
    run iptc iptc "$p"
    run comment comment "$p"
  done
} >"$out"
echo "golden-dump: $out ($(wc -l <"$out") lines)"
