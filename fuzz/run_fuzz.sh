#!/usr/bin/env bash
# Fuzzes the three file readers side by side: run_fuzz.sh SECONDS (default 60), all of
# them within those SECONDS. The targets: library (the library file), list (the list
# exchange file) and color_table (colour tables).
# Builds each with clang's libFuzzer and AddressSanitizer when a source changed, writes
# its seed corpus from fuzz/TARGET_seeds.txt, then runs them. New inputs collect in
# build/fuzz/corpus/TARGET and are kept for the next run; each target's output is kept in
# build/fuzz/TARGET.log. The last lines give each target's runs; a crash leaves its input
# in build/fuzz/ as TARGET-crash-... and makes this script fail, naming the target.
set -euo pipefail

seconds=${1:-60}
root=$(cd "$(dirname "$0")/.." && pwd)
out=${TESSELLUM_FUZZ_DIR:-$root/build/fuzz}
cxx=${CXX_FUZZ:-clang++}
targets=(library list color_table)

readers=(
  tests/support/library_samples.cpp
  color/web_safe.cpp color/palette.cpp color/ptr_list.cpp color/color_library.cpp color/record_blocks.cpp storage/color_records.cpp
  storage/errno_codes.cpp storage/system_io.cpp storage/binary_file.cpp storage/safe_save.cpp
  storage/library_file.cpp storage/list_file.cpp storage/color_table.cpp
)

cd "$root"
flags=(-std=c++17 -g -O1 -fno-omit-frame-pointer -fsanitize=fuzzer,address,undefined
  -fno-sanitize-recover=undefined -I"$root")
# The readers are compiled once for the three targets, two at a time, each when its source
# or a header it may include is newer than its object; then each target is linked.
mkdir -p "$out/obj"
newest_header=$(ls -t color/*.h storage/*.h fuzz/*.h tests/support/library_samples.h | head -n 1)
compile() {  # compile SOURCE OBJECT
  "$cxx" "${flags[@]}" -c "$1" -o "$2" || { echo "run_fuzz: $1 did not build"; return 1; }
}
objects=() jobs=()
for f in "${readers[@]}"; do
  object="$out/obj/$(tr / _ <<<"${f%.cpp}").o"
  objects+=("$object")
  if [ ! -f "$object" ] || [ "$f" -nt "$object" ] || [ "$newest_header" -nt "$object" ]; then
    [ "${#jobs[@]}" -ge 2 ] && { wait "${jobs[0]}" || exit 1; jobs=("${jobs[@]:1}"); }
    compile "$f" "$object" &
    jobs+=($!)
  fi
done
for job in "${jobs[@]}"; do wait "$job" || exit 1; done
for t in "${targets[@]}"; do
  binary=$out/${t}_fuzz
  mkdir -p "$out/corpus/$t"
  stale=0
  for f in "fuzz/${t}_fuzz.cpp" "${objects[@]}"; do [ "$f" -nt "$binary" ] && stale=1; done
  if [ "$stale" = 1 ] || [ "$newest_header" -nt "$binary" ]; then
    echo "building $binary"
    "$cxx" "${flags[@]}" "fuzz/${t}_fuzz.cpp" "${objects[@]}" -o "$binary" \
      || { echo "run_fuzz: the $t target did not build"; exit 1; }
  fi
  python3 fuzz/make_seeds.py "fuzz/${t}_seeds.txt" "$out/seeds/$t"
done

# Side by side, each for the whole time: the system shares the cores among them.
pids=()
trap 'kill "${pids[@]}" 2>/dev/null || true' INT TERM
for t in "${targets[@]}"; do
  dict=()
  if [ -f "fuzz/$t.dict" ]; then dict=(-dict="$root/fuzz/$t.dict"); fi
  (cd "$out" && exec "$out/${t}_fuzz" -max_total_time="$seconds" "${dict[@]}" -timeout=10 \
    -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$out/$t-" \
    "$out/corpus/$t" "$out/seeds/$t") >"$out/$t.log" 2>&1 &
  pids+=($!)
done
failed=()
for i in "${!targets[@]}"; do
  if ! wait "${pids[$i]}"; then failed+=("${targets[$i]}"); fi
done

for t in "${failed[@]}"; do
  tail -n 30 "$out/$t.log"
  echo "run_fuzz: the $t target failed; its output: $out/$t.log"
done
[ "${#failed[@]}" = 0 ] || exit 1
for t in "${targets[@]}"; do
  grep -E '^stat::number_of_executed_units' "$out/$t.log" | sed "s/\$/ ($t)/"
  grep -E '^Done' "$out/$t.log" | sed "s/\$/ ($t, corpus of $(ls "$out/corpus/$t" | wc -l))/"
done
