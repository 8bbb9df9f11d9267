#!/usr/bin/env bash
# Compares what the libraries of this tree offer to programs with those of a release:
#   scripts/abi.sh [BASE]    BASE is a tag or a commit; by default the last release's tag (v*)
#   scripts/abi.sh --compare OLD_PREFIX NEW_PREFIX    compares two installations
# Counted are functions and types of installed headers. Fails where programs that were built with BASE
# could not use the new libraries, while their SONAME tells them that they can. Before the first
# release there is nothing to compare with: the libraries are read, and counted.
set -euo pipefail

libraries=(libKelStd libKelStdPlatform)

usage() {
    sed -n '2,8s/^# \{0,1\}//p' "$0" >&2
    exit 2
}

# The file of a library in an installation.
library_in() {
    local found
    found=$(find "$1" -name "$2.so" -print -quit)
    if [ -z "$found" ]; then
        echo "abi: there is no $2.so in $1" >&2
        exit 1
    fi
    readlink -f "$found"
}

soname_of() {
    readelf -d "$1" | sed -n 's/.*(SONAME).*\[\(.*\)\].*/\1/p'
}

# Exit status 0: programs can go on; 1: they cannot.
compare() {
    local old_prefix=$1 new_prefix=$2 failed=0 name old new status
    for name in "${libraries[@]}"; do
        old=$(library_in "$old_prefix" "$name")
        new=$(library_in "$new_prefix" "$name")
        if [ "$(soname_of "$old")" != "$(soname_of "$new")" ]; then
            echo "$name: $(soname_of "$old") becomes $(soname_of "$new"); programs are linked anew"
            continue
        fi
        status=0
        abidiff --no-added-syms --drop-private-types --headers-dir1 "$old_prefix/include" \
            --headers-dir2 "$new_prefix/include" "$old" "$new" >"$work/report" 2>&1 || status=$?
        if [ $((status & 3)) -ne 0 ]; then
            cat "$work/report" >&2
            echo "abi: abidiff could not compare $old with $new" >&2
            exit 1
        fi
        if [ "$status" -ne 0 ]; then
            cat "$work/report"
            echo "$name: what $(soname_of "$old") offered was removed or changed"
            failed=1
            continue
        fi
        abidiff --stat "$old" "$new" >"$work/report" 2>&1 || true
        echo "$name: what $(soname_of "$old") offered is all there"
        grep -E ' [1-9][0-9]* Added' "$work/report" || true
    done
    if [ "$failed" -ne 0 ]; then
        echo "abi: take it back, or raise KELSTD_SOVERSION in CMakeLists.txt (CONTRIBUTING.md, \"Releases and the ABI\")" >&2
    fi
    return "$failed"
}

# Builds a source tree and installs its libraries and headers.
install_libraries() {
    local source=$1 build=$2 prefix=$3
    cmake -S "$source" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -g" \
        -DKELSTD_BUILD_CLI=OFF -DKELSTD_BUILD_TESTS=OFF >&2
    cmake --build "$build" >&2
    cmake --install "$build" --prefix "$prefix" >/dev/null
}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

case "${1:-}" in
--compare)
    [ $# -eq 3 ] || usage
    compare "$2" "$3"
    exit
    ;;
-*) usage ;;
esac
[ $# -le 1 ] || usage

cd "$(dirname "$0")/.."
scripts/setup.sh
base=${1:-$(git describe --tags --match 'v*' --abbrev=0 2>/dev/null || true)}
if [ -n "$base" ] && ! git rev-parse --verify --quiet "$base^{commit}" >/dev/null; then
    echo "abi: there is no tag or commit '$base'" >&2
    exit 2
fi

install_libraries . build/abi "$work/new"
if [ -z "$base" ]; then
    echo "abi: there is no release yet (no tag v*), so nothing to compare with. Name a commit: scripts/abi.sh COMMIT"
    for name in "${libraries[@]}"; do
        library=$(library_in "$work/new" "$name")
        abidw --drop-private-types --headers-dir "$work/new/include" "$library" >"$work/$name.abi"
        echo "$name: $(soname_of "$library") offers $(grep -c '<elf-symbol .*func-type' "$work/$name.abi") functions"
    done
    exit 0
fi

trap 'git worktree remove --force "$work/tree" 2>/dev/null || true; rm -rf "$work"' EXIT
git worktree add --detach --quiet "$work/tree" "$base"
install_libraries "$work/tree" "$work/build" "$work/old"
echo "abi: against $base"
compare "$work/old" "$work/new"
