#!/usr/bin/env bash
# Installs the build into a scratch prefix and builds a small consumer against
# it twice: through the CMake package (C++17) and through pkg-config with a
# plain compiler (C++20), running each program. This catches headers, targets
# or link flags that work inside the build tree but not once installed. With
# a Python interpreter given, it also imports the installed Python module;
# with a Python program given too, it type-checks that program with mypy
# --strict against the installed package, which mypy types only through the
# package's py.typed marker.
#
#   installed_package.sh BUILD_DIR CONSUMER_SRC_DIR [PYTHON [TYPED_PROGRAM]]
set -euo pipefail
build_dir=$1
consumer_dir=$2
python=${3:-}
typed_program=${4:-}

tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
prefix=$tmp/prefix

# Runs a command silently, showing its output only when it fails.
quiet() {
  if ! "$@" >"$tmp/log" 2>&1; then
    cat "$tmp/log" >&2
    echo "failed: $*" >&2
    return 1
  fi
}

echo "-- installing into $prefix"
quiet cmake --install "$build_dir" --prefix "$prefix"

echo "-- building the consumer with find_package"
quiet cmake -S "$consumer_dir" -B "$tmp/consumer" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_BUILD_TYPE=Release
quiet cmake --build "$tmp/consumer"
"$tmp/consumer/consumer"

echo "-- building the consumer with pkg-config"
# The library directory is lib, lib64 or a multiarch one depending on the
# platform, so it is taken from wherever the .pc file was installed.
pc_file=$(find "$prefix" -name morv_qc_json.pc -print -quit)
if [[ -z $pc_file ]]; then
  echo "morv_qc_json.pc was not installed" >&2
  exit 1
fi
pc_dir=$(dirname "$pc_file")
lib_dir=$(dirname "$pc_dir")
flags=$(PKG_CONFIG_PATH=$pc_dir pkg-config --cflags --libs morv_qc_json)
# $flags is split into words on purpose.
# shellcheck disable=SC2086
quiet g++ -std=c++20 -Wall -Wextra -Wpedantic -Werror "$consumer_dir/main.cpp" -o "$tmp/consumer_pc" \
  $flags -Wl,-rpath,"$lib_dir"
"$tmp/consumer_pc"

echo "-- both consumers ran"

echo "-- running the installed tool and finding the schema it names"
schema=share/morv_qc_json/morv.qc.document.v2.schema.json
version=$("$prefix/bin/morv-qc-json" --version)
echo "$version"
if [[ ! -s $prefix/$schema || $version != *"$schema"* ]]; then
  echo "the schema is not installed where --version says" >&2
  exit 1
fi

if [[ -n $python ]]; then
  echo "-- importing the installed Python module"
  module=$(find "$prefix" -path "*/morv_qc_json/_core*.so" -print -quit)
  package=$(dirname "$module")
  if [[ -z $module || ! -f $package/_core.pyi || ! -f $package/py.typed || ! -f $package/__init__.py ]]; then
    echo "the Python package, its stub or py.typed was not installed" >&2
    exit 1
  fi
  PYTHONPATH=$(dirname "$package") "$python" -c '
import morv_qc_json
result = morv_qc_json.loads("{\"schema\":\"morv.qc.document.v2\",\"program\":{\"kind\":\"orca\"}}")
assert morv_qc_json.__file__.startswith("'"$prefix"'"), morv_qc_json.__file__
# The importer comes from its own library, which the module must find too.
imported = morv_qc_json.import_output("not a program output\n")
print(morv_qc_json.__version__, morv_qc_json.to_string(result.status), morv_qc_json.to_string(imported.status))
'
  if [[ -n $typed_program ]]; then
    echo "-- type-checking $(basename "$typed_program") against the installed package with mypy --strict"
    # mypy takes installed packages from the sys.path of the interpreter that
    # runs it, PYTHONPATH included, and types them only if they carry py.typed.
    # It runs from the scratch folder so that no source tree nearby is taken
    # for the package, and keeps its cache there.
    typed_program=$(realpath "$typed_program")
    (cd "$tmp" && PYTHONPATH=$(dirname "$package") "$python" -m mypy --strict --cache-dir "$tmp/mypy-cache" \
      "$typed_program")
  fi
fi
