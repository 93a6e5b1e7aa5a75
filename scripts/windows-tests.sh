#!/usr/bin/env bash
# The Windows tests of both builds under Wine, in a fresh private prefix. Run by
# scripts/test.sh on a (virtual) screen; writes each tree's ctest output to LOG_DIR.
# Usage: windows-tests.sh LOG_DIR. Exits 3 when Wine cannot run x64 programs here.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
logs=$1
source "$root/scripts/wine-env.sh"

wine_prefix_fresh
# The dialog's scenarios at 120, 144 and 192 DPI (125%, 150%, 200%) run in prefixes of
# their own, copies of this one.
wine_prefix_scaled 120 144 192
wine_server -p 2>/dev/null  # one server for the whole run: each test starts faster
# Its desktop starts here, on this screen, with its output away from ctest's: a desktop
# that a test started would hold that test's output open to its time limit.
wine_exec x64 wineboot.exe </dev/null >/dev/null 2>&1
# Exit 3 when x64 cannot run: the x86 tests still run (or print as skipped), but the
# test command fails.
status=0
wine_check_architectures "$root/build/x64/tessellum-host.exe" "$root/build/x86/tessellum-host.exe" \
  || status=3
for tree in x86 x64; do  # x64 last: its summary, with tests run, closes the output
  ctest --test-dir "$root/build/$tree" --output-on-failure 2>&1 | tee "$logs/$tree.log"
done
wine_server -k 2>/dev/null || true
exit $status
