#!/usr/bin/env bash
# Builds the benchmarks and prints four tables, or the one that is named:
#   scripts/bench.sh [first [--jobs NAME,...] [--sizes N,...] [--pairs COUNT]]
#   scripts/bench.sh [repeated [--benchmark_filter=REGEX ...]]
#   scripts/bench.sh [spreadsheets [--size N] [--pairs COUNT]]
#   scripts/bench.sh [python [--size N] [--pairs COUNT]]
# first:    each job once in a process of its own, as ratios to bare pugixml, with their limits and
#           with the memory that reading takes
# repeated: time per foundation of jobs that one process repeats, and the ratio to the yardstick of the
#           same size in the same run
# spreadsheets: tables and JSON, as processor time and as ratio to Python's modules csv and json
# python:   reading and tables of the Python package, as processor time and as ratio to the C++ reading,
#           to a loop over objects and to lxml
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

tables=${1:-all}
[ $# -eq 0 ] || shift
case $tables in first | repeated | spreadsheets | python | all) ;; *) sed -n '2,6p' "$0" >&2; exit 2 ;; esac

install_packages "${build_packages[@]}" libbenchmark-dev libxml2-dev pkg-config pybind11-dev python3 \
  python3-dev python3-lxml python3-numpy python3-pandas
build=build/bench
python=/usr/bin/python3  # as Debian has it, for which its packages are
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DKVFOUND_BENCHMARKS=ON -DKVFOUND_PYTHON=ON \
  -DPython_EXECUTABLE="$python" >/dev/null
cmake --build "$build" --target kvfound_bench kvfound_first_run kvfound_spreadsheets kvfound-python >/dev/null

if [ "$tables" = python ] || [ "$tables" = all ]; then
  "$python" -B bench/python.py "$build/bench/kvfound_first_run" "$build/bench/kvfound_spreadsheets" \
    "$build/tools/python" "$@"
fi

if [ "$tables" = spreadsheets ] || [ "$tables" = all ]; then
  python3 bench/spreadsheets.py "$build/bench/kvfound_spreadsheets" "$@"
fi
if [ "$tables" = first ] || [ "$tables" = all ]; then
  python3 bench/first_runs.py "$build/bench/kvfound_first_run" "$@"
fi
[ "$tables" = repeated ] || [ "$tables" = all ] || exit 0
"$build/bench/kvfound_bench" --benchmark_format=csv "$@" 2>/dev/null | tr -d '"' | awk -F, '
  BEGIN {
    yardsticks["readLegacy"] = yardsticks["readLegacyWith"] = "readLegacyWith/pugixml"
    yardsticks["writeLegacy"] = yardsticks["updateLegacy"] = "writeLegacyWith/pugixml"
    yardsticks["writeLegacyWith"] = "writeLegacyWith/pugixml"
  }
  NR > 1 {
    sub("/min_warmup_time:[0-9.]*", "", $1)
    parts = split($1, part, "/")
    size = parts > 1 ? part[parts] : 1
    job = parts > 2 ? part[1] "/" part[2] : part[1]
    form = part[2]
    sub("_.*", "", form)
    yardstick[NR] = part[1] in yardsticks ? yardsticks[part[1]] : part[1] "WithPugixml/" form
    scale = $5 == "ms" ? 1e6 : $5 == "us" ? 1e3 : 1
    jobs[NR] = job
    sizes[NR] = size
    times[job, size] = $3 * scale
  }
  END {
    printf "%-42s %9s %14s %18s\n", "job", "N", "ns each", "times yardstick"
    for (i = 2; i <= NR; ++i) {
      spent = times[jobs[i], sizes[i]]
      base = times[yardstick[i], sizes[i]]
      printf "%-42s %9d %14.1f %18s\n", jobs[i], sizes[i], spent / sizes[i],
        (base > 0 ? sprintf("%.2f", spent / base) : "-")
    }
  }'
