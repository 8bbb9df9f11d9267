#!/usr/bin/env bash
# Installs what is missing, builds the benchmarks and prints what the library costs as ratios to
# the bare PROJ and Qt calls of the same run: medians of nine repetitions in turn.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh benchmark
cmake --preset benchmark >/dev/null
cmake --build --preset benchmark

results=$(mktemp)
trap 'rm -f "$results"' EXIT
repeated=(--benchmark_repetitions=9 --benchmark_enable_random_interleaving=true
    --benchmark_report_aggregates_only=true --benchmark_format=csv)
build/benchmark/benchmarks/conversion_benchmark "${repeated[@]}" >"$results"
build/benchmark/benchmarks/geoid_benchmark "${repeated[@]}" >>"$results"
library=(build/benchmark/benchmarks/library_benchmark "${repeated[@]}" --benchmark_min_time=0.05)
"${library[@]}" --benchmark_filter='Loading.*/(200|2000)/' >>"$results"
"${library[@]}" --benchmark_filter='Loading/20000/' --benchmark_repetitions=3 >>"$results"
"${library[@]}" --benchmark_filter=LookUp --benchmark_enable_random_interleaving=false >>"$results"
build/benchmark/benchmarks/text_benchmark "${repeated[@]}" --benchmark_min_time=0.05 >>"$results"
build/benchmark/benchmarks/time_benchmark "${repeated[@]}" --benchmark_min_time=0.05 >>"$results"

awk -F, '
    /_median/ { name = $1; gsub(/"|_median/, "", name); median[name] = $4; unit[name] = $5 }
    function row(what, ours, bare, limit,   ratio, verdict) {
        ratio = median[ours] / median[bare]
        verdict = ratio <= limit ? "ok" : "TOO SLOW"
        if (ratio > limit) failed = 1
        printf "%-44s %10.3f %10.3f %-3s %6.3f  <= %.2f  %s\n", what, median[ours], median[bare],
               unit[ours], ratio, limit, verdict
    }
    function growth(what, small, large, factor, limit,   ratio, verdict) {
        ratio = median[large] / median[small] / factor
        verdict = ratio <= limit ? "ok" : "TOO SLOW"
        if (ratio > limit) failed = 1
        printf "%-44s %10.3f %10.3f %-3s %6.3f  <= %.2f  %s\n", what, median[large],
               median[small] * factor, unit[large], ratio, limit, verdict
    }
    function time_row(what, name) { row(what, name, name "Bare", 1.50) }
    END {
        printf "%-44s %10s %10s %-3s %6s\n", "", "KelStd", "bare", "", "ratio"
        row("one location from WGS84 geographic", "oneLocation", "oneLocationBare", 1.10)
        row("100,000 positions, geographic to cartesian", "list/projected:0", "listBare/projected:0", 1.05)
        row("100,000 positions, local to projected", "list/projected:1", "listBare/projected:1", 1.05)
        row("one separation of the geoid", "separation/inverse:0", "separationBare/inverse:0", 1.10)
        row("one separation of the geoid, inverse", "separation/inverse:1", "separationBare/inverse:1", 1.10)
        once = "/iterations:1"
        row("a library of 2,000 systems loaded", "libraryLoading/2000" once, "libraryLoadingBare/2000" once, 1.30)
        growth("the same beside ten times 200", "libraryLoading/200" once, "libraryLoading/2000" once, 10, 1.20)
        growth("20,000 systems beside ten times 2,000", "libraryLoading/2000" once, "libraryLoading/20000" once, 10, 1.20)
        growth("a look-up in 20,000 systems beside 200", "libraryLookUp/200", "libraryLookUp/20000", 1, 4.00)
        row("a length printed", "printLength", "printLengthBare", 2.00)
        row("an angle printed", "printAngle", "printAngleBare", 3.00)
        row("a longitude printed for a table", "printTableAngle", "printTableAngleBare", 3.00)
        row("a length read", "readLength", "readLengthBare", 2.00)
        row("an angle read", "readAngle", "readAngleBare", 3.00)
        row("an angle of one style read", "readAngleOfStyle", "readAngleBare", 3.00)
        time_row("UTC fields to their count", "utcToCount")
        time_row("a count to UTC fields", "utcFromCount")
        time_row("UTC, moved", "utcMove")
        time_row("UTC, before", "utcLess")
        time_row("UTC, equal", "utcEqual")
        time_row("UTC, compared", "utcCompare")
        time_row("UTC as text", "utcText")
        time_row("UTC to GPS calendar time", "utcToGpsT")
        time_row("UTC to GPS week and seconds", "utcToGpsW")
        time_row("GPS calendar time to UTC", "gpsTToUtc")
        time_row("GPS calendar time to week and seconds", "gpsTToGpsW")
        time_row("GPS calendar time, moved", "gpsTMove")
        time_row("GPS calendar time, before", "gpsTLess")
        time_row("GPS week and seconds to UTC", "gpsWToUtc")
        time_row("GPS week and seconds to calendar time", "gpsWToGpsT")
        time_row("a count to GPS week and seconds", "gpsWFromCount")
        time_row("GPS week and seconds, before", "gpsWLess")
        time_row("UTC to local time", "utcToLocal")
        time_row("local time, before", "localLess")
        time_row("local time as text", "localText")
        exit failed
    }' "$results"
build/benchmark/benchmarks/memory_growth
build/benchmark/benchmarks/epoch_memory
