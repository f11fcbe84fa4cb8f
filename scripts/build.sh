#!/usr/bin/env bash
# Configures and builds one preset (release, unless another is named) into build/<preset>; programs end up in its bin/.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-release}
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
cmake --preset "$preset" "${launcher[@]}"
cmake --build --preset "$preset"
