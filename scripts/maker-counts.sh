#!/usr/bin/env bash
# Counts, per corpus file and per maker, our maker rows against the maker tags
# exiv2 names for the same file (its Exif.<Maker>*.* keys, bare 0x.... tags
# left out).   scripts/maker-counts.sh [VVMETA] [CORPUS]   (CORPUS: the native tree's VV_CORPUS_DIR)
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
vvmeta=${1:-$root/build/native/bin/vvmeta}
dir=${2:-$(sed -n 's/^VV_CORPUS_DIR:PATH=//p' "$root/build/native/CMakeCache.txt" 2>/dev/null)}
dir=${dir:-$root/../shared/corpus}
command -v exiv2 >/dev/null || { echo "exiv2 not installed (scripts/setup.sh installs it)" >&2; exit 1; }
declare -A ours theirs
printf '%-22s %-9s %6s %6s\n' file maker ours exiv2
for f in "$dir"/*; do
  case $f in *.md) continue ;; esac
  name=$(basename "$f")
  maker=$(exiv2 -pa -K Exif.Image.Make "$f" 2>/dev/null | sed -E 's/^\S+\s+\S+\s+\S+\s+//' | head -1)
  case ${maker,,} in
    canon*) m=Canon ;; nikon*) m=Nikon ;; olympus*|"om digital"*) m=Olympus ;;
    fuji*) m=Fujifilm ;; minolta*|konica*) m=Minolta ;; pentax*|ricoh*|asahi*) m=Pentax ;;
    *) continue ;;
  esac
  n=$(exiv2 -pa "$f" 2>/dev/null | awk -v m="$m" '{k=$1; split(k,p,"."); if (p[1]=="Exif" && index(p[2],m)==1 && p[3] !~ /^0x[0-9a-fA-F]+$/) c++} END {print c+0}')
  o=$("$vvmeta" exif "$f" 2>/dev/null | awk '/^Maker Note \(/ {on=1; next} on && (/^Maker Note/ || /^-+$/ || /^[A-Za-z ]+:$/) {on=0} on && NF {c++} END {print c+0}')
  printf '%-22s %-9s %6s %6s\n' "$name" "$m" "$o" "$n"
  ours[$m]=$(( ${ours[$m]:-0} + o )); theirs[$m]=$(( ${theirs[$m]:-0} + n ))
done
echo
printf '%-9s %6s %6s %6s\n' maker ours exiv2 "%"
for m in Canon Nikon Olympus Fujifilm Minolta Pentax; do
  t=${theirs[$m]:-0}; o=${ours[$m]:-0}
  printf '%-9s %6s %6s %6s\n' "$m" "$o" "$t" "$([ "$t" -gt 0 ] && echo $((100 * o / t)) || echo -)"
done
