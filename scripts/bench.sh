#!/usr/bin/env bash
# Builds the benchmarks without sanitizers (build/bench) and runs every one of them.
# Each prints its figures as ratios to a baseline measured in the same run.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
cmake -S "$root" -B "$root/build/bench" -DCMAKE_BUILD_TYPE=Release -DTESSELLUM_SANITIZE=OFF >/dev/null
cmake --build "$root/build/bench" -j"$(nproc)" -- --no-print-directory >/dev/null
for bench in "$root"/build/bench/bench/*_bench; do
  echo "== $(basename "$bench")"
  "$bench"
done
