#!/usr/bin/env bash
# Runs clang-tidy's checks (.clang-tidy) over the sources, or over those given: tools/tidy.sh [file …]
# How each is compiled comes from the ci preset's build. Its precompiled headers are the compiler's own; clang reads
# their text.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/build.sh ci
mkdir -p build/tidy
find build/ci -name cmake_pch.hxx -execdir cp {} cmake_tidy.hxx \;
sed -E 's#cmake_pch.hxx#cmake_tidy.hxx#g; s# (-Winvalid-pch|-fpch-preprocess)##g; s#"([^ "]*/)?ccache #"#' \
  build/ci/compile_commands.json >build/tidy/compile_commands.json
[ $# -gt 0 ] || set -- $(git ls-files 'src/*.cpp' 'install/*.cpp' 'tools/*.cpp')
printf '%s\n' "$@" | xargs -n 1 -P "$(nproc)" clang-tidy -p build/tidy --quiet --warnings-as-errors='*' 2>/dev/null
