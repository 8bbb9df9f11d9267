#!/usr/bin/env bash
# From a fresh checkout to converted positions: installs what is missing, builds the release and
# converts the positions of examples/.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
cmake --preset release >build-release.log 2>&1 || { cat build-release.log >&2; exit 1; }
cmake --build --preset release
rm -f build-release.log

# A home directory of its own: nothing is left in yours.
export KELSTD_HOME_DIR="$PWD/build/release/home"
mkdir -p "$KELSTD_HOME_DIR"
