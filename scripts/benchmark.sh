#!/usr/bin/env bash
# Installs what is missing, builds the benchmarks and prints what the library costs beside its peers
# in the same run: medians of repetitions in turn, each held to its bound in benchmarks/bounds.txt.
# Fails when a bound is missed. docs/performance.md tells what the rows mean.
set -euo pipefail
cd "$(dirname "$0")/.."

parts=(conversions geoid library text time many-points agreement memory catalogue)

usage() {
    echo "usage: scripts/benchmark.sh [PART...]"
    echo "PART is one of: ${parts[*]}; all of them by default."
}

chosen=("$@")
if [ $# -eq 0 ]; then
    chosen=("${parts[@]}")
fi
for part in "${chosen[@]}"; do
    case " ${parts[*]} " in
    *" $part "*) ;;
    *)
        if [ "$part" = --help ] || [ "$part" = -h ]; then
            usage
            exit 0
        fi
        echo "benchmark: there is no part '$part'" >&2
        usage >&2
        exit 2
        ;;
    esac
done

# Fewer points and lines are for trying the scripts out.
points=${KELSTD_BENCHMARK_POINTS:-1000000}
if [ "$points" != 1000000 ]; then
    echo "benchmark: the peers get $points points where the report says a million" >&2
fi

scripts/setup.sh benchmark
cmake --preset benchmark >/dev/null
cmake --build --preset benchmark

# Everything temporary lies in one place, also what the benchmarks make, which an interrupt ends
# before they clean up.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export TMPDIR=$work
mkdir "$work/home"

programs=build/benchmark/benchmarks
figures=$work/figures.csv
remarks=$work/remarks.txt
reported=("${chosen[@]}")
failed=0
touch "$figures" "$remarks"

# Keeps the figures that a command prints. The others go on without it.
keep_figures_of() {
    "$@" >>"$figures" || failed=1
}

# Runs a benchmark program repeatedly for its medians.
measure() {
    keep_figures_of "$programs/$1" --benchmark_repetitions=9 \
        --benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only=true \
        --benchmark_format=csv "${@:2}"
}

measure_part() {
    local short=--benchmark_min_time=0.05
    case "$1" in
    conversions) measure conversion_benchmark ;;
    geoid) measure geoid_benchmark ;;
    library)
        measure library_benchmark "$short" --benchmark_filter='Loading.*/(200|2000)/'
        measure library_benchmark "$short" --benchmark_filter='Loading/20000/' \
            --benchmark_repetitions=3
        measure library_benchmark "$short" --benchmark_filter=LookUp \
            --benchmark_enable_random_interleaving=false
        ;;
    text) measure text_benchmark "$short" ;;
    time) measure time_benchmark "$short" ;;
    many-points)
        measure builder_benchmark --benchmark_repetitions=7
        keep_figures_of benchmarks/peers/pyproj_arrays.py "$programs/location_arrays" "$points"
        keep_figures_of env PYTHONPATH=build/benchmark/python benchmarks/python/array_call.py \
            build/benchmark/lib/array_call.so tests/data/systems/ed50_utm_31n.xml "$points"
        keep_figures_of env PYTHONPATH=build/benchmark/python benchmarks/python/ways.py \
            build/benchmark/bin/kelstd examples/dask tests/data/systems/ed50_utm_31n.xml "$points"
        keep_figures_of benchmarks/peers/whole_programs.py build/benchmark/bin/kelstd \
            tests/data/systems/ed50_utm_31n.xml "$points"
        if [ "$(nproc)" -gt 1 ]; then
            reported+=(two-threads)
        else
            echo "a million on two threads: not measured on a single core" >>"$remarks"
        fi
        ;;
    agreement)
        "$programs/way_agreement" "$((points / 10))" build/benchmark/bin/library/standard \
            >>"$remarks" || failed=1
        ;;
    catalogue)
        keep_figures_of "$programs/catalogue_times"
        keep_figures_of env KELSTD_HOME_DIR="$work/home" benchmarks/peers/import_command.py \
            build/benchmark/bin/kelstd tests/data/systems/ed50_utm_31n.xml
        ;;
    memory)
        "$programs/memory_growth" >>"$remarks" || failed=1
        "$programs/epoch_memory" >>"$remarks" || failed=1
        ;;
    esac
}

for part in "${chosen[@]}"; do
    measure_part "$part"
done
awk -v parts="${reported[*]}" -f benchmarks/report.awk "$figures" benchmarks/bounds.txt || failed=1
cat "$remarks"
exit "$failed"
