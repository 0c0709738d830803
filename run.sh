#!/usr/bin/env bash
# Prints an image's metadata through Metadata.dll under Wine, as the viewer
# would get it. Without an argument it uses a demo JPEG that it makes itself.
#   ./run.sh [IMAGE]
set -euo pipefail
root=$(cd "$(dirname "$0")" && pwd)
"$root/scripts/setup.sh" >/dev/null
"$root/scripts/build.sh" native win32 >/dev/null
image=${1:-}
if [ -z "$image" ]; then
  image="$root/build/demo.jpg"
  "$root/build/native/bin/make_demo" "$image"
fi
if [ ! -r "$image" ]; then echo "run.sh: cannot read $image" >&2; exit 1; fi
image=$(cd "$(dirname "$image")" && pwd)/$(basename "$image")
cd "$root/build/win32/bin"
exec "$root/scripts/wine-run.sh" vvmeta.exe show "$(WINEPREFIX="${VV_WINEPREFIX:-$HOME/.cache/vantaview/wine32}" winepath -w "$image" 2>/dev/null)"
