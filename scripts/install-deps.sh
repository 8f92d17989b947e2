#!/usr/bin/env bash
# Installs the Debian packages the program needs to build, run and be tested.
# Does nothing when everything is already there.
set -euo pipefail
pkgs=(build-essential cmake pkg-config qt6-base-dev qt6-base-dev-tools
      libsqlite3-dev libgl1-mesa-dev fonts-liberation fonts-dejavu-core
      qt6-translations-l10n mdbtools-dev libzip-dev libxcb1-dev faketime poppler-utils
      libqt6svg6 dpkg-dev)
missing=()
for p in "${pkgs[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  SUDO=""
  [ "$(id -u)" -eq 0 ] || SUDO="sudo"
  export DEBIAN_FRONTEND=noninteractive
  $SUDO apt-get update
  $SUDO apt-get install -y --no-install-recommends "${missing[@]}"
fi
