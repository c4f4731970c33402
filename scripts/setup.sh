#!/usr/bin/env bash
# Installs every Debian package the project needs, and only what is missing: apt-get runs
# (with one 'apt-get update' first) only when something must be installed. Safe to run often.
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config
  libboost-dev                       # boost::shared_ptr in the host's interfaces
  libutfcpp-dev                      # the one standard UTF-8 codec (UTF8-CPP, headers only)
  libgtest-dev libgmock-dev          # tests
  libcli11-dev nlohmann-json3-dev libfast-float-dev libflatbuffers-dev   # the reference host application (FlatBuffers: its FlatGeobuf writer)
  libgdal-dev gdal-bin libsqlite3-dev   # tessel's GIS formats and coordinate systems (SQLite for the GeoPackage index); ogr2ogr for its benchmark
  clang libclang-rt-14-dev           # fuzz targets (libFuzzer)
  libwxgtk3.2-dev libx11-dev libxtst-dev   # the dialogs (wxWidgets), their screenshots and key presses
  xvfb xauth fonts-liberation2       # the dialogs' tests, in real windows on a virtual display
)

# scripts/setup.sh windows: also the cross compiler, Wine and GoogleTest's source for the
# windows preset.
if [ "${1:-}" = windows ]; then
  packages+=(
    g++-mingw-w64-x86-64-posix         # the posix-thread variant: std::mutex
    wine wine64                        # runs the Windows tests
    googletest                         # GoogleTest's source, built with the cross compiler
    locales                            # the Polish locale that sets Wine's ANSI code page to 1250
    xdotool                            # answers tessel.exe's dialogs with real keys in its GUI test
  )
fi

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$package")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "setup: installing ${missing[*]}" >&2
sudo_cmd=()
if [ "$(id -u)" -ne 0 ]; then sudo_cmd=(sudo); fi
"${sudo_cmd[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
