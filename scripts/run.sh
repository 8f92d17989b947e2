#!/usr/bin/env bash
# Installs what is missing, builds the program, creates the demo book (once) in ./demo and
# starts the program on it.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j"$(nproc)" --target ivacompras
if [ ! -f demo/kestrel.mdb ]; then
  mkdir -p demo
  ./build/ivacompras demo demo
fi
exec ./build/ivacompras --ajustes demo
