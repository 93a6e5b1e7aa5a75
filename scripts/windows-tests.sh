#!/usr/bin/env bash
# The Windows tests of both builds under Wine, in a fresh private prefix. Run by
# scripts/test.sh on a (virtual) screen; writes each tree's ctest output to LOG_DIR.
# Usage: windows-tests.sh LOG_DIR
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
logs=$1
source "$root/scripts/wine-env.sh"

wine_prefix_fresh
wineserver -p 2>/dev/null  # one server for the whole run: each test starts faster
export TESSELLUM_WINE_X64=$(wine_probe x64 "$root/build/x64/tessellum-host.exe")
export TESSELLUM_WINE_X86=$(wine_probe x86 "$root/build/x86/tessellum-host.exe")
echo "test: Wine runs x64 programs: $([ "$TESSELLUM_WINE_X64" = 1 ] && echo yes || echo NO);" \
  "x86 programs: $([ "$TESSELLUM_WINE_X86" = 1 ] && echo yes || echo 'no, so the x86 runtime tests are skipped')"
for tree in x64 x86; do
  ctest --test-dir "$root/build/$tree" --output-on-failure 2>&1 | tee "$logs/$tree.log"
done
wineserver -k 2>/dev/null || true
