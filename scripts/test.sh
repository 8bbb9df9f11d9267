#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test: in a normal build, and under
# AddressSanitizer and UndefinedBehaviorSanitizer; then what threads share, alone, under
# ThreadSanitizer. With --quick, in a normal build only; with --qt6, in a normal build with Qt 6.
set -euo pipefail
cd "$(dirname "$0")/.."

presets=(dev asan tsan)
toolkit=()
case "${1:-}" in
"") ;;
--quick) presets=(dev) ;;
--qt6)
    presets=(qt6)
    toolkit=(qt6)
    ;;
*)
    echo "usage: scripts/test.sh [--quick|--qt6]" >&2
    exit 2
    ;;
esac
scripts/setup.sh "${toolkit[@]}"
for preset in "${presets[@]}"; do
    echo "=== $preset"
    cmake --preset "$preset"
    cmake --build --preset "$preset"
    ctest --preset "$preset" --parallel "$(nproc)"
done
