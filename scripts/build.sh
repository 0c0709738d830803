#!/usr/bin/env bash
# Configures and builds the project's trees:
#   native    g++, the core, vvmeta, native tests, benchmarks
#   sanitize  clang, the core and tests with AddressSanitizer + UBSan, fuzz targets
#   win32     i686 MinGW-w64 (posix), Metadata.dll, vvmeta.exe, Windows tests
# Usage: scripts/build.sh [native|sanitize|win32|all]...   (default: all)
# The trees go to build/<tree>, or to $VV_BUILD_ROOT/<tree> when that is set.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
out=${VV_BUILD_ROOT:-$root/build}
jobs=$(nproc 2>/dev/null || echo 2)
trees=("$@")
[ ${#trees[@]} -eq 0 ] && trees=(all)
[ "${trees[0]}" = all ] && trees=(native sanitize win32)

configure() {  # dir, cmake arguments...
  local dir=$1; shift
  if [ ! -f "$out/$dir/CMakeCache.txt" ]; then
    cmake -S "$root" -B "$out/$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
  fi
}

for tree in "${trees[@]}"; do
  case $tree in
    native)   configure native -DVV_BENCH=ON ;;
    sanitize) CC=clang CXX=clang++ configure sanitize -DVV_SANITIZE=ON -DVV_FUZZ=ON -DCMAKE_BUILD_TYPE=Debug ;;
    win32)    configure win32 -DCMAKE_TOOLCHAIN_FILE="$root/cmake/i686-w64-mingw32.cmake" ;;
    *) echo "build.sh: unknown tree '$tree'" >&2; exit 2 ;;
  esac
  echo "== building $tree"
  cmake --build "$out/$tree" -j "$jobs" -- --no-print-directory >/dev/null \
    || cmake --build "$out/$tree" -j 1   # on failure, show the errors plainly
done
