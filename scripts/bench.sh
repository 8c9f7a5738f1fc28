#!/usr/bin/env bash
# Builds and runs the benchmarks and prints one table: time per foundation, and for each job the ratio
# to its yardstick of the same size in the same run. Arguments go to the benchmarks:
#   scripts/bench.sh [--benchmark_filter=REGEX ...]
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${build_packages[@]}" libbenchmark-dev libxml2-dev pkg-config
build=build/bench
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DKVFOUND_BENCHMARKS=ON >/dev/null
cmake --build "$build" --target kvfound_bench >/dev/null

program=$build/bench/kvfound_bench
"$program" --benchmark_format=csv "$@" 2>/dev/null | awk -F, '
  function yardstick(job) {
    if (job ~ /^readLegacy\// || job ~ /^readLegacyWith\/libxml2/) return "readLegacyWith/pugixml"
    if (job ~ /^(writeLegacy|updateLegacy)\// || job ~ /^writeLegacyWith\/libxml2/) return "writeLegacyWith/pugixml"
    if (job ~ /^readExchange\/current/) return "readExchangeWithPugixml/current"
    if (job ~ /^readExchange\/first/) return "readExchangeWithPugixml/first"
    if (job ~ /^writeExchange\/current/) return "writeExchangeWithPugixml/current"
    if (job ~ /^writeExchange\/first/) return "writeExchangeWithPugixml/first"
    return ""
  }
  /^"/ {
    gsub(/"/, "", $1)
    size = $1; sub(/.*\//, "", size)
    job = $1; sub(/\/[0-9]+$/, "", job)
    if (size == job) size = 1
    scale = $5 == "ms" ? 1e6 : $5 == "us" ? 1e3 : 1
    time[job, size] = $3 * scale
    order[++count] = job SUBSEP size
  }
  END {
    printf "%-42s %9s %14s %18s\n", "job", "N", "ns each", "times yardstick"
    for (i = 1; i <= count; ++i) {
      split(order[i], part, SUBSEP)
      base = time[yardstick(part[1]), part[2]]
      printf "%-42s %9d %14.1f %18s\n", part[1], part[2], time[part[1], part[2]] / part[2],
        base > 0 ? sprintf("%.2f", time[part[1], part[2]] / base) : "-"
    }
  }'

document=$(mktemp)
trap 'rm -f "$document"' EXIT
"$program" --make 1000000 >"$document"
"$program" --memory "$document"
