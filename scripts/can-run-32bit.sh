#!/usr/bin/env bash
# Exits 0 when this machine can execute 32-bit x86 programs (and so 32-bit
# Wine). Some sandboxed kernels refuse them with "Exec format error"; there the
# Windows suites run as 64-bit builds under 64-bit Wine instead.
exec /usr/lib/wine/wine --version >/dev/null 2>&1
