#!/usr/bin/env bash
# Configures and builds a preset: tools/build.sh <preset> [target …]
set -euo pipefail
cd "$(dirname "$0")/.."
preset=$1
shift

export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
export CCACHE_BASEDIR=$PWD
echo "Building ($preset)"
cmake --preset "$preset" >"build-$preset.log" 2>&1 || { cat "build-$preset.log" >&2; exit 1; }
rm -f "build-$preset.log"
targets=()
[ $# -eq 0 ] || targets=(--target "$@")
cmake --build "build/$preset" "${targets[@]}" -- --quiet
