#!/usr/bin/env bash
# Makes the Debian package in build/package and says where it lies.
set -euo pipefail
root=$(cd "$(dirname "$(readlink -f "$0")")/.." && pwd)
. "$root/tools/setup.sh"
need_packages $BUILD_PACKAGES qt6-svg-dev dpkg-dev file
build_preset package
cd "$root/build/package"
cpack >"$root/build/cpack.log" 2>&1 || { tail -5 "$root/build/cpack.log" >&2; exit 1; }
say "Install it with:  apt-get install $(ls "$PWD"/pelorin_*.deb)"
