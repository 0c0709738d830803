#!/usr/bin/env bash
# Configures and builds the project's trees:
#   native    g++, the core, vvmeta, native tests, benchmarks
#   sanitize  clang, the core and tests with AddressSanitizer + UBSan, fuzz targets
#   fuzzfast  clang, UBSan only: the fuzz targets for long campaigns (their
#             corpus is then replayed under the sanitize tree)
#   win32     i686 MinGW-w64 (posix), Metadata.dll, vvmeta.exe, Windows tests
#   win64     x86-64 MinGW-w64, the same Windows tests for machines that
#             cannot run 32-bit programs (only 64-bit Wine works there)
# Usage: scripts/build.sh [native|sanitize|fuzzfast|win32|win64|all]...   (default: all;
# all adds win64 only where 32-bit programs cannot run)
# The trees go to build/<tree>, or to $VV_BUILD_ROOT/<tree> when that is set.
# A tree is configured again whenever its arguments differ from the last time
# (a new option here, another VV_CORPUS_DIR); an option dropped from them
# keeps its cached value until the tree is deleted.
# VV_CORPUS_DIR, when set, is the folder of real files the tests read (the
# trees' VV_CORPUS_DIR; default ../shared/corpus beside the checkout).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
out=${VV_BUILD_ROOT:-$root/build}
jobs=$(nproc 2>/dev/null || echo 2)
trees=("$@")
[ ${#trees[@]} -eq 0 ] && trees=(all)
if [ "${trees[0]}" = all ]; then
  trees=(native sanitize win32)
  "$root/scripts/can-run-32bit.sh" || trees+=(win64)
fi

# ccache, where installed, lets fresh clones and other checkouts reuse what
# was compiled before (paths are taken relative to the checkout).
launcher=()
if command -v ccache >/dev/null; then
  launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1
fi

# Unset, the tree's own default (../shared/corpus beside the checkout) holds.
corpus=(-UVV_CORPUS_DIR)
[ -n "${VV_CORPUS_DIR:-}" ] && corpus=(-DVV_CORPUS_DIR="$(realpath -m "$VV_CORPUS_DIR")")

configure() {  # dir, cmake arguments...
  local dir=$1; shift
  local args=(-DCMAKE_BUILD_TYPE=RelWithDebInfo "${launcher[@]}" "${corpus[@]}" "$@")
  local stamp="$out/$dir/vv-configure-args" want
  want=$(printf '%s\n' "${args[@]}")
  if [ ! -f "$out/$dir/CMakeCache.txt" ] || [ "$(cat "$stamp" 2>/dev/null)" != "$want" ]; then
    cmake -S "$root" -B "$out/$dir" "${args[@]}" >/dev/null
    printf '%s\n' "$want" >"$stamp"
  fi
}

for tree in "${trees[@]}"; do
  case $tree in
    native)   configure native -DVV_BENCH=ON ;;
    sanitize) CC=clang CXX=clang++ configure sanitize -DVV_SANITIZE=ON -DVV_FUZZ=ON ;;
    fuzzfast) CC=clang CXX=clang++ configure fuzzfast -DVV_UBSAN=ON -DVV_FUZZ=ON ;;
    win32)    configure win32 -DCMAKE_TOOLCHAIN_FILE="$root/cmake/i686-w64-mingw32.cmake" ;;
    win64)    configure win64 -DCMAKE_TOOLCHAIN_FILE="$root/cmake/x86_64-w64-mingw32.cmake" ;;
    *) echo "build.sh: unknown tree '$tree'" >&2; exit 2 ;;
  esac
  echo "== building $tree"
  cmake --build "$out/$tree" -j "$jobs" -- --no-print-directory >/dev/null \
    || cmake --build "$out/$tree" -j 1   # on failure, show the errors plainly
done
