#!/usr/bin/env bash
# Installs what VELTHRA needs on Debian 12. Does nothing when every package is
# already there.
#   scripts/install-deps.sh          building, playing and testing (scripts/test.sh)
#   scripts/install-deps.sh --play   building and playing only (scripts/play.sh)
set -euo pipefail
PLAY=(
  g++ cmake make pkg-config
  libsdl1.2-dev libgl-dev libglu1-mesa-dev libgl1-mesa-dri libx11-dev
  libopenal-dev libopenal1 libvorbis-dev libminizip-dev zlib1g-dev libtinyxml-dev
  # the asset generator draws its letters with FreeType from DejaVu
  libfreetype-dev fonts-dejavu-core
)
TEST=(
  python3 libgtest-dev
  xvfb xauth xdotool x11-utils imagemagick
  # installing and packaging: validators, manual pages, the .deb's library
  # dependencies, the second SDL 1.2 (sdl12-compat, beside the classic one)
  appstream desktop-file-utils man-db file dpkg-dev libsdl1.2-compat
  # fuzzing the loaders: clang and its libFuzzer runtime; the layout check
  clang libclang-rt-14-dev clang-format
)
case "${1:-}" in
  --play) PACKAGES=("${PLAY[@]}") ;;
  "") PACKAGES=("${PLAY[@]}" "${TEST[@]}") ;;
  *) echo "usage: $0 [--play]" >&2; exit 2 ;;
esac
missing=()
for p in "${PACKAGES[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
SUDO=
[ "$(id -u)" -eq 0 ] || SUDO=sudo
echo "Installing: ${missing[*]}"
$SUDO apt-get update -qq
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
