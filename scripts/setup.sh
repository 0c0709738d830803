#!/usr/bin/env bash
# Installs everything the builds and tests need, from Debian's packages only.
# Idempotent: a second run checks and returns quickly. Runs as root (or via sudo).
set -euo pipefail

here=$(cd "$(dirname "$0")/.." && pwd)
# Downloaded sources are kept per user, outside the checkout, so fresh clones reuse them.
deps="${VV_DEPS_DIR:-$HOME/.cache/vantaview}"
export DEBIAN_FRONTEND=noninteractive

SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi

packages=(
  cmake make g++ googletest libgtest-dev libbenchmark-dev libtinyxml2-dev
  clang libclang-rt-14-dev
  gcc-mingw-w64-i686-posix g++-mingw-w64-i686-posix binutils-mingw-w64-i686 mingw-w64-i686-dev
  wine wine32 wine64 xvfb xauth
  gcc-mingw-w64-x86-64-posix g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 mingw-w64-x86-64-dev
  libimage-exiftool-perl dpkg-dev ccache
  libexif-dev libexiv2-dev exiv2 pkg-config locales
  zlib1g-dev libz-mingw-w64-dev
)

missing=()
for p in "${packages[@]}"; do
  # wine32 is an i386 package; dpkg-query needs the arch qualifier for it.
  q="$p"; [ "$p" = wine32 ] && q="wine32:i386"
  if ! dpkg-query -W -f='${Status}' "$q" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

need_src=1
ls "$deps"/tinyxml2-src/tinyxml2.cpp >/dev/null 2>&1 && need_src=0

if [ ${#missing[@]} -gt 0 ] || [ $need_src -eq 1 ]; then
  if ! dpkg --print-foreign-architectures | grep -qx i386; then
    $SUDO dpkg --add-architecture i386
  fi
  # deb-src entries for the cross build's tinyxml2 source.
  srcfile=/etc/apt/sources.list.d/vantaview-src.sources
  if [ ! -f "$srcfile" ]; then
    $SUDO tee "$srcfile" >/dev/null <<'SRC'
Types: deb-src
URIs: http://deb.debian.org/debian
Suites: bookworm
Components: main
Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg
SRC
  fi
  # The security suite's i386 index is sometimes out of step with amd64
  # ("Mirror sync in progress?"); multi-arch libraries then resolve to different
  # versions per architecture and wine32 is refused. Pinning the security suite
  # low for this install makes both architectures take the main suite's versions.
  pin=/etc/apt/preferences.d/vantaview-security-pin
  $SUDO tee "$pin" >/dev/null <<'PIN'
Package: *
Pin: release l=Debian-Security
Pin-Priority: 100
PIN
  trap '$SUDO rm -f "$pin"' EXIT
  $SUDO apt-get update -q || echo "setup: apt-get update reported errors; going on with the indexes it got" >&2
  if [ ${#missing[@]} -gt 0 ]; then
    $SUDO apt-get install -y -q --no-install-recommends "${missing[@]}" \
      || $SUDO apt-get install -y -q --no-install-recommends --allow-downgrades "${missing[@]}"
  fi
  if [ $need_src -eq 1 ]; then
    rm -rf "$deps/tinyxml2-dl" "$deps/tinyxml2-src"
    mkdir -p "$deps/tinyxml2-dl"
    (cd "$deps/tinyxml2-dl" && apt-get source --download-only tinyxml2 >/dev/null)
    mkdir -p "$deps/tinyxml2-src"
    tar -xf "$deps"/tinyxml2-dl/tinyxml2_*.orig.tar.* -C "$deps/tinyxml2-src" --strip-components=1
  fi
  $SUDO rm -f "$pin"
  trap - EXIT
fi

# A locale with a decimal comma, for the test that number formatting ignores
# the user's locale.
if ! grep -qix 'de_DE\.utf-\?8' <<<"$(locale -a 2>/dev/null)"; then
  if grep -Eq '^#? *de_DE\.UTF-8 UTF-8' /etc/locale.gen 2>/dev/null; then
    $SUDO sed -i -E 's/^# *(de_DE\.UTF-8 UTF-8)/\1/' /etc/locale.gen
  else
    echo 'de_DE.UTF-8 UTF-8' | $SUDO tee -a /etc/locale.gen >/dev/null
  fi
  $SUDO locale-gen >/dev/null
fi

# Wine's first start builds its prefix (about ten seconds); do it once here.
# Where 32-bit programs cannot run, the Windows suites use a 64-bit prefix.
export WINEDEBUG=-all
if "$here/scripts/can-run-32bit.sh"; then
  export WINEPREFIX="${VV_WINEPREFIX:-$HOME/.cache/vantaview/wine32}" WINEARCH=win32
  winebin=wine winesrv=wineserver
  if [ ! -f "$WINEPREFIX/system.reg" ]; then
    mkdir -p "$(dirname "$WINEPREFIX")"
    wineboot -i >/dev/null 2>&1 || true
    wineserver -w || true
  fi
else
  export WINEPREFIX="${VV_WINEPREFIX64:-$HOME/.cache/vantaview/wine64}" WINEARCH=win64
  winebin=/usr/lib/wine/wine64 winesrv=/usr/lib/wine/wineserver64
  if [ ! -f "$WINEPREFIX/system.reg" ]; then
    mkdir -p "$(dirname "$WINEPREFIX")"
    /usr/lib/wine/wine64 wineboot -i >/dev/null 2>&1 || true
    /usr/lib/wine/wineserver64 -w || true
  fi
fi
# The virtual display has no window manager: Wine then draws the title bars
# and frames itself (a managed window would show a black band instead), and
# the dialog suites run much faster.
if ! grep -q '"Managed"="N"' "$WINEPREFIX/user.reg" 2>/dev/null; then
  "$winebin" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1 || true
  "$winesrv" -w || true
fi
echo "setup: ready"
