#!/usr/bin/env bash
# Installs what is missing, builds the benchmarks and prints what the library costs as ratios to
# the bare PROJ calls of the same run: medians of nine repetitions in turn.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh benchmark
cmake --preset benchmark >/dev/null
cmake --build --preset benchmark

results=$(mktemp)
trap 'rm -f "$results"' EXIT
build/benchmark/benchmarks/conversion_benchmark --benchmark_repetitions=9 \
    --benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only=true \
    --benchmark_format=csv >"$results"

awk -F, '
    /_median/ { name = $1; gsub(/"|_median/, "", name); median[name] = $4; unit[name] = $5 }
    function row(what, ours, bare, limit,   ratio, verdict) {
        ratio = median[ours] / median[bare]
        verdict = ratio <= limit ? "ok" : "TOO SLOW"
        if (ratio > limit) failed = 1
        printf "%-44s %10.3f %10.3f %-3s %6.3f  <= %.2f  %s\n", what, median[ours], median[bare],
               unit[ours], ratio, limit, verdict
    }
    END {
        printf "%-44s %10s %10s %-3s %6s\n", "", "KelStd", "bare PROJ", "", "ratio"
        row("one location from WGS84 geographic", "oneLocation", "oneLocationBare", 1.10)
        row("100,000 positions, geographic to cartesian", "list/projected:0", "listBare/projected:0", 1.05)
        row("100,000 positions, local to projected", "list/projected:1", "listBare/projected:1", 1.05)
        exit failed
    }' "$results"
build/benchmark/benchmarks/memory_growth
