#!/usr/bin/env bash
# Installs what Ostrane needs from Debian's packages, builds it, and then
# either starts the program ("run") or runs every test ("test").
set -euo pipefail

cd "$(dirname "$0")/.."
what="${1:-run}"

packages=(build-essential cmake libgtest-dev libbenchmark-dev qt6-base-dev qt6-multimedia-dev
          libgl-dev fonts-dejavu-core qt6-translations-l10n)
if [ "$what" = test ]; then
  # The end-to-end tests: a virtual display with a window manager, the pointer
  # and the keys, pictures of the screen, and the windows read through the
  # accessibility bus from Debian's Python.
  packages+=(xvfb openbox xdotool imagemagick x11-utils dbus at-spi2-core python3 python3-pyatspi)
  # The score sheet read back: its pages, its text, a page as a picture.
  packages+=(poppler-utils)
  # The Debian package: made by CPack (dpkg-shlibdeps, file), checked by
  # Debian's validators and lintian.
  packages+=(dpkg-dev file appstream desktop-file-utils lintian)
fi
missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" || missing+=("$package")
done
if [ "${#missing[@]}" -gt 0 ]; then
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y --no-install-recommends "${missing[@]}"
fi

cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j "$(nproc)"

case "$what" in
  run)
    if [ -x build/ostrane ]; then
      exec ./build/ostrane
    fi
    # Until the window exists: the engine on an example rack.
    ./build/ostrane-cli lexicon
    exec ./build/ostrane-cli words ZEBRE?
    ;;
  test)
    export QT_QPA_PLATFORM=offscreen
    cd build && ctest --output-on-failure -j "$(nproc)"
    ;;
  *)
    echo "usage: tools/build.sh [run|test]" >&2
    exit 2
    ;;
esac
