#!/usr/bin/env bash
# Builds the benchmarks without sanitizers (build/bench) and runs every one of them,
# then, under Wine for each architecture Wine runs here, the run through our host and
# the main dialog on a virtual screen. Each prints its figures as ratios to a baseline
# measured in the same run.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
"$root/scripts/build.sh"
cmake -S "$root" -B "$root/build/bench" -DCMAKE_BUILD_TYPE=Release -DTESSELLUM_SANITIZE=OFF >/dev/null
cmake --build "$root/build/bench" -j"$(nproc)" -- --no-print-directory >/dev/null
for bench in "$root"/build/bench/bench/*_bench; do
  echo "== $(basename "$bench")"
  "$bench"
done
source "$root/scripts/wine-env.sh"
[ -d "$WINEPREFIX" ] || wine_prefix_fresh
wine_prefix_fonts  # also into a prefix made before the fonts were installed
# The dialog runs in a prefix at 192 DPI (200%), where it measures itself at that scale
# and at 96 DPI in the same run.
[ -d "$WINEPREFIX-192" ] || wine_prefix_scaled 192
for arch in x64 x86; do
  echo "== host_run_bench ($arch)"
  if [ "$(wine_probe "$arch" "$root/build/$arch/tessellum-host.exe" 2>/dev/null)" = 1 ]; then
    wine_exec "$arch" "$root/build/$arch/bench/host_run_bench.exe"
    echo "== dialog_bench ($arch)"
    xvfb-run -a -s "-screen 0 1280x1024x24" bash -c \
      'root=$1; source "$root/scripts/wine-env.sh"; export WINEPREFIX="$WINEPREFIX-192"
       wine_display_fresh; wine_exec "$2" "$1/build/$2/bench/dialog_bench.exe"' \
      _ "$root" "$arch" 2>&1 | grep -v '^X connection'
  else
    echo "skipped: $(wine_probe "$arch" "$root/build/$arch/tessellum-host.exe" 2>&1 >/dev/null)"
  fi
done
