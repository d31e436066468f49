#!/usr/bin/env bash
# Runs each fuzz target for SECONDS, one after the other, from its seed corpus
# and fails if any of them finds a crash, a leak, a timeout or runs out of
# memory. One line per target says how it went.
#
#   fuzz/run-fuzzers.sh build-fuzz/fuzz 60                      # all five
#   fuzz/run-fuzzers.sh build-fuzz/fuzz 600 round_trip_fuzzer   # just one
#
# The committed corpus is only read: libFuzzer writes new inputs into the
# first corpus folder it is given, and that is a scratch copy. Logs and
# findings go to FINDINGS_DIR (default DIR/findings); a finding replays with
# `DIR/TARGET FILE`.
set -euo pipefail

if [ $# -lt 2 ]; then
  echo "usage: $0 FUZZ_BUILD_DIR SECONDS [TARGET...]" >&2
  exit 64
fi
fuzz_dir=$1
seconds=$2
shift 2
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  targets=(deserialize_fuzzer round_trip_fuzzer serialize_fuzzer decode_paths_fuzzer import_output_fuzzer)
fi

here=$(cd "$(dirname "$0")" && pwd)
findings_dir=${FINDINGS_DIR:-$fuzz_dir/findings}
mkdir -p "$findings_dir"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# The text targets start from documents and share the format's dictionary;
# the longest seed is the 100 KB generated document. The serialize target
# reads its bytes as the choices of the test-document builder: any bytes make
# a whole run, the first eight seeding it and the rest choosing where odd
# values go, so the inputs of earlier runs kept in its corpus are seeds as
# good as any. The importer
# starts from the program outputs of the tests, every folder of tests/data
# (libFuzzer reads a corpus folder with its subfolders).
seed_corpus() {
  case "$1" in
    serialize_fuzzer) echo "$here/corpus/serialize" ;;
    import_output_fuzzer) echo "$here/../tests/data" ;;
    *) echo "$here/corpus/json" ;;
  esac
}

target_flags() {
  case "$1" in
    serialize_fuzzer) echo "-max_len=8192" ;;
    # Whole outputs, the largest seed being 460 KB.
    import_output_fuzzer) echo "-max_len=524288" ;;
    *) echo "-max_len=131072 -dict=$here/json.dict" ;;
  esac
}

# "cov: 1234 ft: 5678 corp: 90/1Mb" of the last status line, and the speed.
summary() {
  local log=$1
  local status runs speed
  status=$(grep -o 'cov: [0-9]* ft: [0-9]* corp: [0-9]*/[0-9A-Za-z]*' "$log" | tail -n 1 || true)
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
  speed=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log")
  echo "${runs:-?} runs, ${speed:-?} exec/s, ${status:-no coverage line}"
}

# The sanitizer's or the target's own first words about what went wrong.
finding() {
  local log=$1
  local what artifact
  what=$(grep -m 1 -E '^FINDING:|^==[0-9]+== ?ERROR|runtime error' "$log" || true)
  artifact=$(sed -n 's/.*Test unit written to //p' "$log" | tail -n 1)
  echo "${what:-exit status $2}; input: ${artifact:-none written}"
}

failed=0
for target in "${targets[@]}"; do
  binary=$fuzz_dir/$target
  log=$findings_dir/$target.log
  work=$scratch/$target
  mkdir -p "$work"
  # shellcheck disable=SC2046 # the flags are meant to split into words
  if "$binary" "$work" "$(seed_corpus "$target")" $(target_flags "$target") \
      -max_total_time="$seconds" -timeout=30 -rss_limit_mb=2048 -print_final_stats=1 \
      -artifact_prefix="$findings_dir/$target-" >"$log" 2>&1; then
    echo "ok    $target: $(summary "$log")"
  else
    code=$?
    echo "FAIL  $target: $(finding "$log" "$code") (log: $log)"
    failed=1
  fi
done
exit $failed
