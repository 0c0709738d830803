#!/usr/bin/env bash
# Prints an image's metadata through Metadata.dll under Wine, as the viewer
# would get it. Without an argument it uses a demo JPEG that it makes itself.
#   ./run.sh [IMAGE]
# Where this machine cannot execute 32-bit programs, the 64-bit build of the
# same DLL answers instead (64-bit Wine runs there; 32-bit Wine cannot).
set -euo pipefail
root=$(cd "$(dirname "$0")" && pwd)
"$root/scripts/setup.sh" >/dev/null
tree=win32
"$root/scripts/can-run-32bit.sh" || tree=win64
"$root/scripts/build.sh" native win32 $tree >/dev/null
image=${1:-}
if [ -z "$image" ]; then
  image="$root/build/demo.jpg"
  "$root/build/native/bin/make_demo" "$image"
fi
if [ ! -r "$image" ]; then echo "run.sh: cannot read $image" >&2; exit 1; fi
image=$(cd "$(dirname "$image")" && pwd)/$(basename "$image")
cd "$root/build/$tree/bin"
# Wine's drive Z: is the root of the file system.
exec "$root/scripts/wine-run.sh" vvmeta.exe show "Z:${image//\//\\}"
