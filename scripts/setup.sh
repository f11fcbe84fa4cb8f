#!/usr/bin/env bash
# Installs the Debian packages that building and testing need. With nothing to install it changes nothing.
set -euo pipefail

packages=(
  g++ cmake ninja-build ccache pkg-config clang-format clang-tidy
  libcurl4-openssl-dev libsqlite3-dev libcli11-dev nlohmann-json3-dev libboost-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  # Calc: the application, its SDK, a display to run it on, and the driver of its tests.
  libreoffice-calc libreoffice-dev libreoffice-gtk3 python3-uno zip xvfb openbox xdotool imagemagick
  # Excel: the cross compilers, the Windows stand-in and the installer's compiler.
  g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix wine64 fonts-wine nsis
)

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

install="apt-get update && apt-get install -y --no-install-recommends ${missing[*]}"
if [ "$(id -u)" -eq 0 ]; then
  as_root=()
elif command -v sudo >/dev/null; then
  as_root=(sudo)
else
  echo "Some packages are missing. As root, run:" >&2
  echo "  $install" >&2
  exit 1
fi
log=$(mktemp)
trap 'rm -f "$log"' EXIT
echo "Installing ${#missing[@]} packages..."
if ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive sh -c "$install" >"$log" 2>&1; then
  cat "$log" >&2
  exit 1
fi
