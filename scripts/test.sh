#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test: in a normal build, and under
# AddressSanitizer and UndefinedBehaviorSanitizer; then what threads share, alone, under
# ThreadSanitizer. With --quick, in a normal build only.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh

presets=(dev asan tsan)
if [ "${1:-}" = --quick ]; then
    presets=(dev)
fi
for preset in "${presets[@]}"; do
    echo "=== $preset"
    cmake --preset "$preset"
    cmake --build --preset "$preset"
    ctest --preset "$preset" --parallel "$(nproc)"
done
