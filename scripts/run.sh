#!/usr/bin/env bash
# From a fresh checkout to converted positions: installs what is missing, builds the release and
# converts the positions of examples/.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh build
cmake --preset release
cmake --build --preset release

# A home directory of its own: nothing is left in yours.
export KELSTD_HOME_DIR="$PWD/build/release/home"
mkdir -p "$KELSTD_HOME_DIR"

kelstd=build/release/bin/kelstd
show() {
    printf '\n$ kelstd %s\n' "$*"
    "$kelstd" "$@"
}
show convert --table --system examples/rd_new.xml examples/rd_new_points.csv
show convert --table --system examples/british_national_grid.xml --from local-neh \
    examples/british_national_grid_points.txt
