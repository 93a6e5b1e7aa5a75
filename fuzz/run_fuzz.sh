#!/usr/bin/env bash
# Fuzzes the library reader: run_fuzz.sh SECONDS (default 60).
# Builds the target with clang's libFuzzer and AddressSanitizer when a source changed,
# writes the seed corpus from fuzz/seeds.txt, then runs for SECONDS. New inputs collect
# in build/fuzz/corpus and are kept for the next run; a crash leaves its input in
# build/fuzz/ and makes this script fail.
set -euo pipefail

seconds=${1:-60}
root=$(cd "$(dirname "$0")/.." && pwd)
out=${TESSELLUM_FUZZ_DIR:-$root/build/fuzz}
binary=$out/library_fuzz
cxx=${CXX_FUZZ:-clang++}

sources=(
  fuzz/library_fuzz.cpp
  tests/support/library_samples.cpp
  color/web_safe.cpp color/palette.cpp color/ptr_list.cpp color/color_library.cpp
  storage/errno_codes.cpp storage/system_io.cpp storage/binary_file.cpp storage/library_file.cpp
)

mkdir -p "$out/corpus"
cd "$root"
stale=0
if [ ! -x "$binary" ]; then
  stale=1
else
  for f in "${sources[@]}" color/*.h storage/*.h tests/support/library_samples.h; do
    if [ "$f" -nt "$binary" ]; then stale=1; fi
  done
fi
if [ "$stale" = 1 ]; then
  echo "building $binary"
  "$cxx" -std=c++17 -g -O1 -fno-omit-frame-pointer \
    -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=undefined \
    -I"$root" "${sources[@]}" -o "$binary"
fi

python3 fuzz/make_seeds.py fuzz/seeds.txt "$out/seeds"
cd "$out"
"$binary" -max_total_time="$seconds" -dict="$root/fuzz/library.dict" -timeout=10 \
  -rss_limit_mb=2048 -print_final_stats=1 "$out/corpus" "$out/seeds"
