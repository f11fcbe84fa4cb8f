#!/usr/bin/env bash
# scripts/build.sh [PRESET [TARGET...]]: configures and builds one preset (release, unless another is named) into
# build/<preset>, programs in its bin/; everything, unless targets are named.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-release}
targets=("${@:2}")
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
cmake --preset "$preset" "${launcher[@]}"
cmake --build --preset "$preset" ${targets:+--target "${targets[@]}"}
