#!/usr/bin/env bash
# A fuzzing campaign over every libFuzzer target of the sanitizer tree.
#   scripts/fuzz.sh [--fast] [--runs N | SECONDS] [TARGET...]
# Each target runs for SECONDS (default 60) or until N inputs, with a corpus
# kept in build/fuzz-corpus/<target> that grows from run to run. It starts
# from the fixture-built seeds and, for the readers of whole files, from the
# real camera files of the corpus folder (VV_CORPUS_DIR). Crashes, hangs and leaks land in
# build/fuzz-artifacts/. Prints, per target: inputs run, inputs per second,
# coverage (edges), corpus size and findings.
# --fast fuzzes with the UBSan-only tree (several times the inputs per second)
# and then replays the whole kept corpus once under AddressSanitizer + UBSan;
# "replay" then shows the inputs replayed and that run's findings.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
out=${VV_BUILD_ROOT:-$root/build}
limit=(-max_total_time=60)
fast=0
if [ "${1:-}" = --fast ]; then fast=1; shift; fi
if [ "${1:-}" = --runs ]; then limit=(-runs="$2"); shift 2
elif [[ "${1:-}" =~ ^[0-9]+$ ]]; then limit=(-max_total_time="$1"); shift; fi

"$root/scripts/build.sh" sanitize >/dev/null || exit 1
bin=$out/sanitize/bin
replay=""
if [ $fast -eq 1 ]; then
  "$root/scripts/build.sh" fuzzfast >/dev/null || exit 1
  replay=$bin
  bin=$out/fuzzfast/bin
fi
seeds=$out/sanitize/fuzz/seeds
real=$(sed -n 's/^VV_CORPUS_DIR:PATH=//p' "$out/sanitize/CMakeCache.txt")
"$bin/make_seeds" "$seeds" >/dev/null || exit 1
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  for t in "$bin"/fuzz_*; do targets+=("$(basename "$t" | sed 's/^fuzz_//')"); done
fi

mkdir -p "$out/fuzz-artifacts"
printf '%-12s %12s %10s %8s %8s %s\n' target inputs "inputs/s" edges corpus "findings${replay:+ / replay under ASan}"
status=0
for t in "${targets[@]}"; do
  corpus=$out/fuzz-corpus/$t
  mkdir -p "$corpus"
  # Whole files from real cameras help the readers that take a whole file.
  case $t in
    exif|containers|comment|iptc|xmp)
      [ -d "$real" ] && find "$real" -type f -size -256k -exec cp -n {} "$corpus/" \; ;;
  esac
  log=$out/fuzz-artifacts/$t.log
  before=$(ls "$out/fuzz-artifacts" | grep -c "^$t-" || true)
  # shellcheck disable=SC2086  # VV_FUZZ_OPTIONS: more libFuzzer flags, e.g. -max_len=65536
  "$bin/fuzz_$t" "${limit[@]}" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 ${VV_FUZZ_OPTIONS:-} \
      -artifact_prefix="$out/fuzz-artifacts/$t-" "$corpus" "$seeds/$t" >"$log" 2>&1
  rc=$?
  after=$(ls "$out/fuzz-artifacts" | grep -c "^$t-" || true)
  runs=$(grep -Eo 'stat::number_of_executed_units: *[0-9]+' "$log" | grep -Eo '[0-9]+$' | tail -1)
  speed=$(grep -Eo 'stat::average_exec_per_sec: *[0-9]+' "$log" | grep -Eo '[0-9]+$' | tail -1)
  edges=$(grep -Eo 'cov: [0-9]+' "$log" | tail -1 | grep -Eo '[0-9]+')
  size=$(ls "$corpus" | wc -l)
  findings=$((after - before))
  [ $rc -ne 0 ] && [ $findings -eq 0 ] && findings="exit $rc (see $log)"
  if [ -n "$replay" ]; then
    # Every kept input once more, under AddressSanitizer.
    "$replay/fuzz_$t" -runs=0 -timeout=10 -rss_limit_mb=2048 \
        -artifact_prefix="$out/fuzz-artifacts/$t-asan-" "$corpus" >"$log.asan" 2>&1
    rrc=$?
    late=$(ls "$out/fuzz-artifacts" | grep -c "^$t-asan-" || true)
    [ $rrc -ne 0 ] && late="exit $rrc (see $log.asan)"
    [ "$late" != 0 ] && status=1
    findings="$findings / $(ls "$corpus" | wc -l) inputs, $late"
  fi
  [ "$findings" != 0 ] && [ "${findings%% /*}" != 0 ] && status=1
  printf '%-12s %12s %10s %8s %8s %s\n' "$t" "${runs:-?}" "${speed:-?}" "${edges:-?}" "$size" "$findings"
done
exit $status
