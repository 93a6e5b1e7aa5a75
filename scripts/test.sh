#!/usr/bin/env bash
# Runs every test: set-up, build, native unit tests, then the Windows tests of both
# builds under Wine on a virtual screen (x86 ones print as skipped where 32-bit Wine
# cannot run). Ends with one line of totals.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh" || exit 1
"$root/scripts/build.sh" || exit 1

logs="$root/build/test-logs"
rm -rf "$logs" && mkdir -p "$logs" "$root/build/screenshots"

# A short fuzzing round of the three file readers on their seed corpora (longer: see
# README), at the lowest priority beside the tests: it takes the time the Windows tests
# spend waiting for windows, and gives way whenever they need the processor.
echo "test: fuzzing the library, list and colour table readers for ${TESSELLUM_FUZZ_SECONDS:-20} seconds"
nice -n 19 bash "$root/fuzz/run_fuzz.sh" "${TESSELLUM_FUZZ_SECONDS:-20}" >"$logs/fuzz.out" 2>&1 &
fuzzing=$!

ctest --test-dir "$root/build/native" -j"$(nproc)" --output-on-failure 2>&1 | tee "$logs/native.log"
xvfb-run -a -s "-screen 0 1280x1024x24" bash "$root/scripts/windows-tests.sh" "$logs"
windows_status=$?

if wait "$fuzzing"; then
  fuzz_failed=0
  tail -n 12 "$logs/fuzz.out" | grep -E '^stat::number_of_executed_units|^Done' || true
else
  fuzz_failed=1
  tail -n 40 "$logs/fuzz.out"
fi

# Totals over the three trees, from ctest's own summaries.
passed=0 failed=0 skipped=0
for tree in native x64 x86; do
  log="$logs/$tree.log"
  line=$(grep -E 'tests passed, [0-9]+ tests? failed out of [0-9]+' "$log" 2>/dev/null | tail -n 1)
  if [ -z "$line" ]; then
    echo "test: the $tree tests gave no summary"
    failed=$((failed + 1))
    continue
  fi
  total=$(sed -E 's/.* out of ([0-9]+).*/\1/' <<<"$line")
  f=$(sed -E 's/.*tests passed, ([0-9]+) tests? failed.*/\1/' <<<"$line")
  s=$(grep -c '(Skipped)' "$log" || true)
  passed=$((passed + total - f - s))
  failed=$((failed + f))
  skipped=$((skipped + s))
done
passed=$((passed + 1 - fuzz_failed))
failed=$((failed + fuzz_failed))
if [ "$windows_status" != 0 ]; then
  echo "test: FAILED: the x64 plug-in did not run under Wine (see the 'wine:' line above)"
  failed=$((failed + 1))
fi
echo "screenshots: $root/build/screenshots"
echo "tests: $passed passed, $failed failed, $skipped skipped"
[ "$failed" = 0 ]
