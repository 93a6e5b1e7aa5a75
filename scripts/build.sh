#!/usr/bin/env bash
# Configures and builds the three trees: build/native (portable code, unit tests, tools,
# benchmarks) first, as its generators draw the plug-in's pictures, then build/x86 and
# build/x64 (plug-ins, our host, Windows tests).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
jobs=$(nproc)
build() {  # build TREE [cmake arguments]
  local tree=$1; shift
  cmake -S "$root" -B "$root/build/$tree" -DCMAKE_BUILD_TYPE=Release "$@" >/dev/null
  cmake --build "$root/build/$tree" -j"$jobs" -- --no-print-directory >/dev/null
  echo "build: $tree done"
}
build native -DTESSELLUM_SANITIZE=ON \
  -DTESSELLUM_X86_DIR="$root/build/x86" -DTESSELLUM_X64_DIR="$root/build/x64"
build x86 -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-i686.cmake" \
  -DCMAKE_CROSSCOMPILING_EMULATOR="$root/scripts/wine-run;x86" \
  -DTESSELLUM_NATIVE_DIR="$root/build/native"
build x64 -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-x86_64.cmake" \
  -DCMAKE_CROSSCOMPILING_EMULATOR="$root/scripts/wine-run;x64" \
  -DTESSELLUM_NATIVE_DIR="$root/build/native"
