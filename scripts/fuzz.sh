#!/usr/bin/env bash
# Runs one fuzz target with libFuzzer and the sanitizers: scripts/fuzz.sh TARGET SECONDS. Starts from
# the target's corpus, which stays as it is; what a run finds on its way is kept in
# build/fuzz/found/TARGET and goes on from there next time. A finding ends the run with an error and
# stands in build/fuzz/findings/TARGET; mended, it belongs into the corpus.
set -euo pipefail
cd "$(dirname "$0")/.."

if [ $# -ne 2 ]; then
    echo "usage: scripts/fuzz.sh TARGET SECONDS" >&2
    echo "targets:" $(ls fuzz/corpus) >&2
    exit 2
fi
target=$1
seconds=$2

scripts/setup.sh fuzz
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --target "fuzz_$target"

found=build/fuzz/found/$target
findings=build/fuzz/findings/$target
mkdir -p "$found" "$findings"

# Targets that need files have them in memory where the machine offers it, and leave none behind.
memory=$(mktemp -d -p "$([ -w /dev/shm ] && echo /dev/shm || echo /tmp)")
trap 'rm -rf "$memory"' EXIT

# Qt sets room aside for what a stream announces and gives it back when nothing comes: too much is a
# std::bad_alloc to it, which must not be a finding (malloc_limit_mb, allocator_may_return_null).
TMPDIR=$memory \
ASAN_OPTIONS=allocator_may_return_null=1:${ASAN_OPTIONS:-} \
    "build/fuzz/fuzz/fuzz_$target" "$found" "fuzz/corpus/$target" \
    -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -malloc_limit_mb=0 -max_len=16384 \
    -artifact_prefix="$findings/" -print_final_stats=1
