#!/usr/bin/env bash
# Prints every reading export's answer for every file of the shared corpus
# (and the demo files, when built) into one text file, so that two builds can
# be compared byte for byte:
#   scripts/golden-dump.sh native [OUT]   build/native/bin/vvmeta
#   scripts/golden-dump.sh dll [OUT]      build/win64/bin/vvmeta.exe and its
#                                         Metadata.dll under 64-bit Wine
# OUT defaults to build/golden-<kind>.txt. Compare with cmp or diff -u.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
kind=${1:-native}
out=${2:-$root/build/golden-$kind.txt}
corpus=${VV_CORPUS:-$root/../shared/corpus}
[ -d "$corpus" ] || corpus=/work/shared/corpus

case $kind in
  native)
    vvmeta=("$root/build/native/bin/vvmeta")
    winpath() { printf '%s' "$1"; } ;;
  dll)
    bin="$root/build/win64/bin"
    # A prefix of its own: a wineserver started here, without a display,
    # would leave the Windows suites' dialogs without a desktop if they ran
    # at the same time in the shared prefix.
    export VV_WINEPREFIX64="${VV_WINEPREFIX64:-$HOME/.cache/vantaview/wine64-golden}"
    vvmeta=("$root/scripts/wine-run.sh" "$bin/vvmeta.exe")
    # Wine takes DOS paths; drive Z: is the root of the Unix file system.
    winpath() { printf 'Z:%s' "${1//\//\\}"; } ;;
  *) echo "golden-dump.sh: native or dll" >&2; exit 2 ;;
esac

files=("$corpus"/*)
[ -d "$root/build/native/demo" ] && files+=("$root"/build/native/demo/*)

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
