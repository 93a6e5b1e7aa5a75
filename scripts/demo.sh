#!/usr/bin/env bash
# The main job: set up, build both plug-ins, and apply the x64 plug-in through our host
# to a generated sample image with a stored tile. The result is out/demo/result.png.
# Usage: demo.sh [RRGGBB | TILE.txt]: the tile is the checker of that colour (default
# 3C78B4, which is not web-safe), or a tile written as text (see demo/tile.txt).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
"$root/scripts/build.sh"
source "$root/scripts/wine-env.sh"
[ -d "$WINEPREFIX" ] || wine_prefix_fresh

out="$root/out/demo"
mkdir -p "$out"
"$root/build/native/make-sample" 640 480 "$out/sample.png"
tile=${1:-3C78B4}
if [ -f "$tile" ]; then
  "$root/build/native/make-tile" "$tile" "$out/tile.params"
else
  "$root/build/native/make-tile" --color "$tile" "$out/tile.params"
fi
# --repeat: the stored tile is laid at once, as a paint program's "repeat filter" does.
wine_exec x64 "$root/build/x64/tessellum-host.exe" --params "$out/tile.params" --repeat \
  --rect 60,80,420,560 "$root/build/x64/Tessellum.8bf" "$out/sample.png" "$out/result.png"
echo "demo: the input is $out/sample.png, the result $out/result.png"
