#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# bench.sh [FILE.apk...]: measures the time, memory and instructions of the libraries and of the command. Prints a table of the
#     targets and tables of ratios, with a row for each FILE, and writes them to build/bench/report.md. Raw results are in
#     build/bench/*.json and memory.jsonl. Takes about ten minutes on an otherwise idle machine.
# bench.sh --check: counts instructions and compares them with bench/instructions.json. The exit status is 1 when a row
#     grew by more than 5 %, or is missing on either side.
# bench.sh --update: makes these counts the baseline.
# bench.sh --scan [SORREL]: measures `sorrel scan` by the number of its workers, for docs/scaling.md; about half a minute.
#     SORREL is the program of another build to compare with.
# bench.sh --shelf: measures the index beside the bare work, for docs/shelf.md; about a minute.
# bench.sh --qml: measures the first frame of the example home-screen-qml beside an empty window, for docs/qml.md; about a
#     minute.
# bench.sh --viewer: measures the first paint of the viewer beside an empty window, for docs/viewer.md; about a minute.
# bench.sh --hostile: measures the hostile files in the programs of the tests, and replaces their table in
#     docs/performance.md; about five minutes.
# bench.sh --icons: measures icons only, and prints the rows of Google Benchmark; about half a minute.
# bench.sh --plots: measures growth only, and draws docs/growth-time.svg and docs/growth-memory.svg.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

# SORREL_BENCH_PRESET names another preset whose tree has the benchmarks.
preset=${SORREL_BENCH_PRESET:-bench}
results=build/$preset
programs=$results/bin
framework=/usr/share/android-framework-res/framework-res.apk

say() {
    echo "== $* (${SECONDS}s)" >&2
}

# prepare [TARGET...]: builds these targets, or everything, and writes the generated packages.
prepare() {
    require "${bench_packages[@]}"
    say "Building"
    build "$preset" "$@"
    mkdir -p "$results/packages"
    "$programs/write_packages" "$results/packages"
}

# benchmark NAME REPETITIONS [ARGUMENT...]: runs bench_NAME, writes its results to NAME.json and its output to NAME.log.
benchmark() {
    local name=$1 repetitions=$2
    shift 2
    if ! "$programs/bench_$name" "--benchmark_repetitions=$repetitions" \
        --benchmark_enable_random_interleaving=true --benchmark_display_aggregates_only=true \
        "--benchmark_out=$results/$name.json" --benchmark_out_format=json "$@" >"$results/$name.log" 2>&1; then
        tail -n 5 "$results/$name.log" >&2
        return 1
    fi
}

# Adds the growth cases to memory.jsonl.
memory_growth() {
    local values configurations fill activities
    for values in 10000 100000 1000000 4000000; do
        for configurations in 1 20 100; do
            for fill in dense empty; do
                "$programs/bench_memory" table "$values" "$configurations" "$fill"
            done
        done
    done >>"$results/memory.jsonl"
    for activities in 10 100 1000 10000; do
        "$programs/bench_memory" manifest "$activities"
    done >>"$results/memory.jsonl"
}

measure_growth() {
    say "Growth: time"
    benchmark growth 7
    say "Growth: memory"
    : >"$results/memory.jsonl"
    memory_growth
}

# measure_hostile [PAGE]: measures the hostile files of the tests, and replaces the table in PAGE. The preset release has the
# compiler options of the benchmarks.
measure_hostile() {
    require "${test_packages[@]}"
    say "Building the tests of hostile files"
    mapfile -t tests < <(python3 bench/hostile.py --programs)
    build release "${tests[@]}"
    say "Hostile files"
    python3 bench/hostile.py build/release/bin "$results" "$@"
}

# Sets the arrays `files`, all packages that libsorrel reads, and `real_files`, those that other programs read as well. Other
# programs cannot read most generated packages, which have no type specs. A row has the name of its file, so names are unique.
choose_packages() {
    local file name names=" "
    real_files=("$results"/samples/*.apk "$results/packages/table-1MB.apk" "$framework")
    files=()
    for file in "$results"/samples/*.apk "$framework" "$results"/packages/*.apk; do
        names+="$(basename -- "$file") "
        # One sample has a table in an encoding that the kit alone reads.
        ! "$programs/bench_memory" package "$file" >/dev/null 2>&1 || files+=("$file")
    done
    for file in "$@"; do
        file=$(cd "$caller_directory" && realpath -- "$file")
        name=$(basename -- "$file")
        if [[ $names == *" $name "* ]]; then
            echo "$file is left out: there is a package of that name already" >&2
        elif ! "$programs/bench_memory" package "$file" >/dev/null; then
            echo "$file is left out: it cannot be read" >&2
        else
            files+=("$file")
            real_files+=("$file")
            names+="$name "
        fi
    done
}

case ${1:-} in
--check | --update)
    prepare bench_instructions write_packages samples
    say "Instructions"
    python3 bench/instructions.py "$results" "$1"
    ;;
--plots)
    prepare
    measure_growth
    python3 bench/report.py "$results" --plots docs
    ;;
--qml)
    prepare bench_qml bench_shelf sorrel-command sorrelqmlplugin samples
    say "Measuring windows"
    python3 bench/qml.py "$programs/bench_qml" "$programs/bench_shelf" "$results/qml" \
        examples/home-screen-qml/main.qml bench/empty.qml "$results/samples"
    ;;
--viewer)
    require "${bench_packages[@]}" xvfb
    say "Building"
    build "$preset" bench_viewer sorrel-viewer-reader samples
    python3 bench/viewer.py "$programs/bench_viewer" "$results/libexec/sorrel/sorrel-viewer-reader" \
        "$results/samples/babel.aapt2.apk"
    ;;
--shelf)
    require "${bench_packages[@]}"
    say "Building"
    build "$preset" bench_shelf sorrel-command samples
    python3 bench/shelf.py "$programs/bench_shelf" "$programs/sorrel" "$results/samples"
    ;;
--scan)
    require "${bench_packages[@]}"
    say "Building"
    build release sorrel-command samples
    python3 bench/scan.py build/release/bin/sorrel build/release/samples "${@:2}"
    ;;
--icons)
    prepare bench_icons write_packages
    "$programs/bench_icons" --benchmark_repetitions=15 --benchmark_min_time=0.05 --benchmark_enable_random_interleaving=true \
        --benchmark_display_aggregates_only=true
    ;;
--hostile)
    measure_hostile docs/performance.md
    ;;
-*)
    echo "usage: bench.sh [FILE.apk...] | --check | --update | --icons | --plots | --qml | --scan | --shelf | --viewer | --hostile" >&2
    exit 2
    ;;
*)
    # Rows of missing programs show "not installed".
    require "${peer_packages[@]}" || true
    prepare
    choose_packages "$@"
    say "Packages: time"
    benchmark packages 5 "${files[@]}"
    measure_growth
    say "Growth of queries"
    benchmark queries 7 --benchmark_min_time=0.05
    say "Icons"
    benchmark icons 15 --benchmark_min_time=0.05
    say "Packages: memory"
    for file in "${files[@]}"; do
        "$programs/bench_memory" package "$file"
    done >>"$results/memory.jsonl"
    say "Instructions"
    python3 bench/instructions.py "$results"
    say "Other programs"
    python3 bench/peers/peers.py --build "$results" "${real_files[@]}"
    say "Many packages"
    python3 bench/scan.py "$programs/sorrel" "$results/samples" "$results/scan.json" >/dev/null
    measure_hostile >/dev/null
    say "Done"
    python3 bench/report.py "$results"
    ;;
esac
