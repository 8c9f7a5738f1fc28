#!/usr/bin/env bash
# Installs what is missing, builds the fuzz targets with Clang and runs each on its regressions and
# then for a while, starting from its seeds:
#   scripts/fuzz.sh [SECONDS | INPUTSx] [TARGET...]   30 seconds and all targets when left out
# With a number of inputs, such as 5000x, each run tries the same ones, so that it finds the same.
# Prints one line a target and fails when one has found something. Inputs that end a target, and all
# that a run finds worth keeping, are written below the build folder only. KVFOUND_BUILD names another
# one than build/fuzz.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

length=(-max_total_time=30)
if [[ ${1:-} =~ ^([0-9]+)(x?)$ ]]; then
  length=("-max_total_time=${BASH_REMATCH[1]}")
  # The entropic schedule is off, since it goes by the time that inputs take.
  [ -z "${BASH_REMATCH[2]}" ] || length=("-runs=${BASH_REMATCH[1]}" -seed=1 -entropic=0)
  shift
fi
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  for source in fuzz/fuzz_*.cpp; do
    target=${source#fuzz/fuzz_}
    targets+=("${target%.cpp}")
  done
fi

install_packages "${build_packages[@]}" clang libclang-rt-dev libxml2-dev
build=${KVFOUND_BUILD:-build/fuzz}
log=$build/build.log
mkdir -p "$build"
{ cmake --preset fuzz -B "$build" && cmake --build "$build" --target "${targets[@]/#/fuzz_}"; } >"$log" 2>&1 ||
  { cat "$log" >&2; exit 1; }

export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1
export UBSAN_OPTIONS=print_stacktrace=1

# run TARGET ARGUMENT...: leaves what libFuzzer says in the target's log.
run() {
  local target=$1
  shift
  "$build/fuzz/fuzz_$target" -timeout=20 -artifact_prefix="$build/runs/$target/found-" "$@" \
    >"$build/runs/$target/log" 2>&1
}

statistic() { sed -n "s/^stat::$2: *//p" "$build/runs/$1/log"; }

# check TARGET: prints its line.
check() {
  local target=$1
  local folder=$build/runs/$target
  mkdir -p "$folder"
  # A copy, since libFuzzer adds to the first folder that it is given.
  rm -rf "$folder/corpus"
  mkdir "$folder/corpus"
  cp "fuzz/seeds/$target"/* "$folder/corpus"
  local old=()
  [ -d "fuzz/regressions/$target" ] && old=("fuzz/regressions/$target"/*)
  local dictionary=()
  [ -e "fuzz/$target.dict" ] && dictionary=("-dict=fuzz/$target.dict")
  local longest
  case $target in
    legacy | exchange | document | check | compare | report | editing | csv | json) longest=4096 ;;
    numbers) longest=128 ;;
    *) longest=512 ;;
  esac

  local file result=clean began=$SECONDS coverage
  for file in "${old[@]}"; do
    run "$target" "$file" || { result="regression $file"; break; }
  done
  if [ "$result" = clean ]; then
    run "$target" "${length[@]}" "-max_len=$longest" "${dictionary[@]}" \
      -print_final_stats=1 "$folder/corpus" ||
      result=$(sed -n 's/.*Test unit written to /found /p' "$folder/log")
  fi
  coverage=$(sed -n 's/^#.* cov: \([0-9]*\) .*/\1/p' "$folder/log" | tail -n 1)
  printf '%-10s %12s %9s %9s %9s  %s\n' "$target" "$(statistic "$target" number_of_executed_units)" \
    "$((SECONDS - began))" "$(statistic "$target" average_exec_per_sec)" "$coverage" \
    "${result:-failed, see $folder/log}"
  [ "$result" = clean ] && return
  grep -A 20 -m 1 -E 'This does not hold|ERROR: |runtime error' "$folder/log" >&2
  return 1
}

printf '%-10s %12s %9s %9s %9s  %s\n' target executions seconds exec/s coverage result
failed=0
for target in "${targets[@]}"; do
  # On each processor one.
  if [ "$(jobs -pr | wc -l)" -ge "$(nproc)" ]; then wait -n || failed=1; fi
  check "$target" &
done
while [ -n "$(jobs -p)" ]; do wait -n || failed=1; done
exit $failed
