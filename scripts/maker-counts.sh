#!/usr/bin/env bash
# Counts, per corpus file and per maker, our maker rows against the maker tags
# exiv2 names for the same file (its Exif.<Maker>*.* keys, bare 0x.... tags
# left out) and the tags exiftool decodes in its MakerNotes group (for makers
# exiv2 does not decode). Covers the corpus folder and its extra folder.
#   scripts/maker-counts.sh [VVMETA] [CORPUS]
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
vvmeta=${1:-$root/build/native/bin/vvmeta}
dir=${2:-$root/../shared/corpus}
command -v exiv2 >/dev/null || { echo "exiv2 not installed (scripts/setup.sh installs it)" >&2; exit 1; }
command -v exiftool >/dev/null || { echo "exiftool not installed (scripts/setup.sh installs it)" >&2; exit 1; }
makers=(Canon Nikon Olympus Fujifilm Minolta Pentax Sony Panasonic Casio Apple Samsung Kodak Sigma Sanyo Ricoh)
declare -A ours theirs decoded
printf '%-40s %-9s %6s %6s %8s\n' file maker ours exiv2 exiftool
for f in "$dir"/* "$dir"/extra/*; do
  case $f in *.md) continue ;; esac
  [ -f "$f" ] || continue
  name=${f#"$dir"/}
  make=$(exiftool -s -s -s -Make "$f" 2>/dev/null | head -1)
  case ${make,,} in
    canon*) m=Canon; k=Canon ;; nikon*) m=Nikon; k=Nikon ;; olympus*|"om digital"*) m=Olympus; k=Olympus ;;
    fuji*) m=Fujifilm; k=Fujifilm ;; minolta*|konica*) m=Minolta; k=Minolta ;;
    pentax*|asahi*) m=Pentax; k=Pentax ;; sony*) m=Sony; k=Sony ;; panasonic*|leica*) m=Panasonic; k=Panasonic ;;
    casio*) m=Casio; k=Casio ;; apple*) m=Apple; k=Apple ;; samsung*) m=Samsung; k=Samsung ;;
    *kodak*) m=Kodak; k=Kodak ;; sigma*) m=Sigma; k=Sigma ;; sanyo*) m=Sanyo; k=Sanyo ;;
    ricoh*) m=Ricoh; k=Ricoh ;;
    *) continue ;;
  esac
  # exiv2 groups: Exif.Sony1, Exif.Sony2Cs, Exif.Samsung2, Exif.PentaxDng...; Ricoh's own note is Exif.Ricoh.
  n=$(exiv2 -pa "$f" 2>/dev/null | awk -v m="$k" '{split($1,p,"."); if (p[1]=="Exif" && index(p[2],m)==1 && p[3] !~ /^0x[0-9a-fA-F]+$/) c++} END {print c+0}')
  e=$(exiftool -a -G0 -s "$f" 2>/dev/null | awk '/^\[MakerNotes\]/ {c++} END {print c+0}')
  o=$("$vvmeta" exif "$f" 2>/dev/null | awk '/^Maker Note \(/ {on=1; next} on && (/^Maker Note \(/ || /^-+$/ || /^[A-Za-z ]+:$/) {on=0} on && NF {c++} END {print c+0}')
  printf '%-40s %-9s %6s %6s %8s\n' "$name" "$m" "$o" "$n" "$e"
  ours[$m]=$(( ${ours[$m]:-0} + o )); theirs[$m]=$(( ${theirs[$m]:-0} + n )); decoded[$m]=$(( ${decoded[$m]:-0} + e ))
done
echo
printf '%-9s %6s %6s %6s %8s %6s\n' maker ours exiv2 "%" exiftool "%"
for m in "${makers[@]}"; do
  t=${theirs[$m]:-0}; o=${ours[$m]:-0}; x=${decoded[$m]:-0}
  [ "$x" -eq 0 ] && [ "$o" -eq 0 ] && continue
  printf '%-9s %6s %6s %6s %8s %6s\n' "$m" "$o" "$t" "$([ "$t" -gt 0 ] && echo $((100 * o / t)) || echo -)" \
    "$x" "$([ "$x" -gt 0 ] && echo $((100 * o / x)) || echo -)"
done
