#!/usr/bin/env bash
# Builds the consumer with the source tree taken in by add_subdirectory, as
# FetchContent does, and runs it. The consumer sets no C++ standard and no
# BUILD_SHARED_LIBS, so this shows that the standard comes with the targets,
# that the libraries build static when the parent says nothing, and that a
# subproject needs neither the tests' nor the tool's dependencies.
#
#   subproject_consumer.sh CONSUMER_SRC_DIR SOURCE_DIR [COMPILER_LAUNCHER]
set -euo pipefail
consumer_dir=$1
source_dir=$2
launcher=${3:-}

tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

# The build type and extensions of the project's own build, so that a
# compiler cache serves the objects it compiled already.
if ! cmake -S "$consumer_dir" -B "$tmp/build" -DMORV_SOURCE_DIR="$source_dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
     -DCMAKE_CXX_EXTENSIONS=OFF ${launcher:+-DCMAKE_CXX_COMPILER_LAUNCHER="$launcher"} >"$tmp/log" 2>&1 ||
   ! cmake --build "$tmp/build" -j 2 >>"$tmp/log" 2>&1; then
  cat "$tmp/log" >&2
  exit 1
fi
if find "$tmp/build" -name 'libmorv_qc_*.so*' | grep -q .; then
  echo "shared libraries were built although the parent did not ask for them" >&2
  exit 1
fi
"$tmp/build/consumer"
