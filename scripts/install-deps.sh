#!/usr/bin/env bash
# Installs the Debian packages that building and testing need, skipping those
# that are already present. Extra groups add what one make target needs:
#
#   install-deps.sh            build and test
#   install-deps.sh bench      ... and the parsers the benchmarks compare with
#   install-deps.sh fuzz       ... and clang with libFuzzer and its sanitizers
set -euo pipefail

packages=(cmake g++ make pkg-config libyaml-cpp-dev libgtest-dev libbenchmark-dev libcli11-dev
  nlohmann-json3-dev libssl-dev python3 python3-dev python3-jsonschema python3-numpy python3-pytest
  python3-hypothesis mypy pybind11-dev python3-cclib python3-qcelemental python3-ase python3-pandas python3-dask
  python3-distributed python3-matplotlib)
for group in "$@"; do
  case "$group" in
    bench) packages+=(rapidjson-dev libsimdjson-dev) ;;
    fuzz) packages+=(clang-14 libfuzzer-14-dev libclang-rt-14-dev) ;;
    *) echo "error: unknown package group '$group' (known: bench, fuzz)" >&2; exit 64 ;;
  esac
done

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$package")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "Installing missing packages: ${missing[*]}"
if [ "$(id -u)" -eq 0 ]; then
  sudo=()
elif command -v sudo >/dev/null 2>&1; then
  sudo=(sudo)
else
  echo "error: cannot install ${missing[*]}: not root and no sudo. Install them and run again." >&2
  exit 1
fi

export DEBIAN_FRONTEND=noninteractive
if ! "${sudo[@]}" apt-get update -qq || ! "${sudo[@]}" apt-get install -y -qq "${missing[@]}"; then
  echo "error: apt-get could not install ${missing[*]}." >&2
  exit 1
fi
