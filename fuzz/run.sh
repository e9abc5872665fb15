#!/usr/bin/env bash
# Runs the fuzz targets, as many at a time as there are processors, and prints what each reached.
#
#   fuzz/run.sh [EXECUTIONS [TARGET...]]
#
# EXECUTIONS is for all chosen targets together, 100000 unless given; faster ones get more of them.
# Environment: BUILD, the build directory (build/fuzz); WORK, where grown corpora, logs and failed
# inputs go (build/fuzz/runs); SECONDS_EACH, an upper limit for each target (none); TIMEOUT, what one
# input may take (2 s); SEED, for the same inputs in every run (another one each time).
# Exits with 1 when a target failed.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit

executions=${1:-100000}
shift || true
targets=("$@")
[ "${#targets[@]}" -gt 0 ] \
    || targets=(fuzz_messages fuzz_calls fuzz_events_xml fuzz_archive fuzz_log fuzz_link fuzz_guidelines_waves_xml)
build=${BUILD:-build/fuzz}
work=${WORK:-build/fuzz/runs}

# Each target's part of the executions, and the longest input in bytes: what the deepest code needs,
# no more.
declare -A share=([fuzz_messages]=15 [fuzz_calls]=15 [fuzz_events_xml]=20 [fuzz_archive]=10 [fuzz_log]=25 [fuzz_link]=15
    [fuzz_guidelines_waves_xml]=30)
declare -A longest=([fuzz_messages]=1024 [fuzz_calls]=512 [fuzz_events_xml]=4096 [fuzz_archive]=4096 [fuzz_log]=2048 [fuzz_link]=2048
    [fuzz_guidelines_waves_xml]=4096)

# The files of the archive target lie in memory where the system has a place for that.
memory=/dev/shm
[ -w "$memory" ] || memory=${TMPDIR:-/tmp}
TMPDIR=$(mktemp -d "$memory/cprdata-fuzz.XXXXXX") || exit 1
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT

# 256 MB is what the library may take. The freed memory that AddressSanitizer holds back counts into
# it as well, so it gets little of it; the other options are for speed.
export ASAN_OPTIONS="quarantine_size_mb=4:thread_local_quarantine_size_kb=64:max_malloc_fill_size=0:malloc_context_size=1:${ASAN_OPTIONS:-}"

# -entropic=0: to weigh the features of each input takes a third of the time.
run_target() {
    local target=$1 kept=tests/data/fuzz/$1 begin=$SECONDS result
    local corpora=("$work/corpus/$target" "fuzz/corpus/$target")
    [ -d "$kept" ] && corpora+=("$kept")
    mkdir -p "$work/corpus/$target" "$work/failed"
    "$build/bin/$target" "${corpora[@]}" -dict=fuzz/cprdata.dict \
        -runs=$((executions * share[$target] / shares)) -max_total_time="${SECONDS_EACH:-0}" \
        -max_len="${longest[$target]}" -entropic=0 -timeout="${TIMEOUT:-2}" -seed="${SEED:-0}" -rss_limit_mb=256 -malloc_limit_mb=128 \
        -artifact_prefix="$work/failed/$target-" -print_final_stats=1 >"$work/$target.log" 2>&1
    result=$?
    echo "$result $((SECONDS - begin))" >"$work/$target.result"
}

last_of() { # the last value of a figure in libFuzzer's log
    grep -o "$2 *[0-9]*" "$1" | tail -1 | grep -o '[0-9]*$' || echo 0
}

mkdir -p "$work"
rm -f "$work"/*.result
shares=0
for target in "${targets[@]}"; do
    shares=$((shares + ${share[$target]:-0}))
done
for target in "${targets[@]}"; do
    if [ -z "${share[$target]:-}" ] || [ ! -x "$build/bin/$target" ]; then
        echo "No fuzz target $build/bin/$target: cmake --preset fuzz && cmake --build --preset fuzz" >&2
        exit 1
    fi
    while [ "$(jobs -rp | wc -l)" -ge "$(nproc)" ]; do
        wait -n
    done
    run_target "$target" &
done
wait

status=0
printf '%-28s %11s %8s %8s %7s %5s  %s\n' target executions seconds per-s edges MB result
for target in "${targets[@]}"; do
    log=$work/$target.log
    read -r result seconds <"$work/$target.result"
    count=$(last_of "$log" 'number_of_executed_units:')
    said=ok
    if [ "$result" -ne 0 ]; then
        status=1
        said="FAILED: $(grep -m1 -E 'Does not hold|runtime error|SUMMARY' "$log"), see $log"
    fi
    printf '%-28s %11d %8d %8d %7d %5d  %s\n' "$target" "$count" "$seconds" \
        $((count / (seconds > 0 ? seconds : 1))) "$(last_of "$log" 'cov:')" \
        "$(last_of "$log" 'peak_rss_mb:')" "$said"
done
exit "$status"
