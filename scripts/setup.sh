#!/usr/bin/env bash
# Installs everything the build and the tests need, from Debian packages only, and
# fetches TinyXML from Debian's source package with the project's patches on top.
# Idempotent: quick when everything is already in place.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)

packages=(cmake ninja-build dpkg-dev g++-mingw-w64-x86-64-posix mingw-w64-x86-64-dev
          wine wine64 googletest picojson-dev libboost1.81-dev clang-14 libclang-rt-14-dev
          osslsigncode openssl python3 patch libxml2-dev libxml2-utils gcovr)

as_root() { if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi; }

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
updated=0
if [ ${#missing[@]} -gt 0 ]; then
  echo "setup: installing ${missing[*]}"
  as_root apt-get update -qq; updated=1
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
      -o DPkg::Lock::Timeout=300 "${missing[@]}" >/dev/null
fi

tx="$root/third_party/tinyxml"
stamp=$(cat "$root"/patches/tinyxml/*.patch | sha256sum | cut -d' ' -f1)
if [ ! -f "$tx/.patches-sha256" ] || [ "$(cat "$tx/.patches-sha256")" != "$stamp" ]; then
  if ! apt-cache showsrc tinyxml 2>/dev/null | grep -q '^Package: tinyxml'; then
    # A deb-src entry made from the machine's own Debian entry: no other host is named.
    if [ -f /etc/apt/sources.list.d/debian.sources ]; then
      sed 's/^Types:.*/Types: deb-src/' /etc/apt/sources.list.d/debian.sources |
        as_root tee /etc/apt/sources.list.d/upkeep-deb-src.sources >/dev/null
    else
      sed -n 's/^deb /deb-src /p' /etc/apt/sources.list |
        as_root tee /etc/apt/sources.list.d/upkeep-deb-src.list >/dev/null
    fi
    as_root apt-get update -qq
  fi
  work=$(mktemp -d); chmod 777 "$work"
  (cd "$work" && apt-get source -qq tinyxml >/dev/null 2>&1)
  rm -rf "$tx"; mkdir -p "$root/third_party"
  mv "$work"/tinyxml-*/ "$tx"
  ls "$work"/*.dsc | xargs -n1 basename > "$tx/SOURCE-PACKAGE"
  rm -rf "$work"
  for p in "$root"/patches/tinyxml/*.patch; do patch -s -d "$tx" -p1 < "$p"; done
  echo "$stamp" > "$tx/.patches-sha256"
fi
