#!/usr/bin/env bash
# Configures and builds the three trees: build/native (portable code, unit tests, tools,
# benchmarks) first, as its generators draw the plug-in's pictures, then build/x86 and
# build/x64 (plug-ins, our host, Windows tests) side by side: each tree's links and
# single-file stretches leave a core idle that the other tree's compiles fill.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
jobs=$(nproc)
out=${TESSELLUM_BUILD_DIR:-$root/build}  # another place for the trees, if wanted
build() {  # build TREE [cmake arguments]
  local tree=$1; shift
  cmake -S "$root" -B "$out/$tree" -DCMAKE_BUILD_TYPE=Release "$@" >/dev/null
  cmake --build "$out/$tree" -j"$jobs" -- --no-print-directory >/dev/null
  echo "build: $tree done"
}
build native -DTESSELLUM_SANITIZE=ON \
  -DTESSELLUM_X86_DIR="$out/x86" -DTESSELLUM_X64_DIR="$out/x64"
build x86 -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-i686.cmake" \
  -DCMAKE_CROSSCOMPILING_EMULATOR="$root/scripts/wine-run;x86" \
  -DTESSELLUM_NATIVE_DIR="$out/native" &
x86=$!
build x64 -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-x86_64.cmake" \
  -DCMAKE_CROSSCOMPILING_EMULATOR="$root/scripts/wine-run;x64" \
  -DTESSELLUM_NATIVE_DIR="$out/native" &
x64=$!
failed=0
wait "$x86" || { echo "build: x86 FAILED"; failed=1; }
wait "$x64" || { echo "build: x64 FAILED"; failed=1; }
exit "$failed"
