#!/usr/bin/env bash
# The main job: set up, build both plug-ins, and apply the x64 plug-in through our host to a
# generated sample image. By default the tile is chosen in the real dialog on a virtual
# screen, with real mouse clicks: the paint program's foreground colour is the demo's
# colour, a click on the Fore box loads it into the sliders, and Fill lays its tile. The
# result is out/demo/result.png, the dialog as the user saw it out/demo/dialog.png.
# Usage: demo.sh [RRGGBB | TILE.txt]: the colour (default 3C78B4, which is not web-safe),
# or a tile written as text (see demo/tile.txt), laid as a repeat of the filter.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
"$root/scripts/build.sh"
source "$root/scripts/wine-env.sh"
[ -d "$WINEPREFIX" ] || wine_prefix_fresh
wine_prefix_fonts  # also into a prefix made before the fonts were installed

out="$root/out/demo"
mkdir -p "$out"
"$root/build/native/make-sample" 640 480 "$out/sample.png"
choice=${1:-3C78B4}
if [ -f "$choice" ]; then
  # A paint program's "repeat filter": the stored tile is laid at once, with no dialog.
  "$root/build/native/make-tile" "$choice" "$out/tile.params"
  wine_exec x64 "$root/build/x64/tessellum-host.exe" --params "$out/tile.params" --repeat \
    --rect 60,80,420,560 "$root/build/x64/Tessellum.8bf" "$out/sample.png" "$out/result.png"
  echo "demo: the input is $out/sample.png, the result $out/result.png"
  exit 0
fi
if ! [[ "$choice" =~ ^[0-9A-Fa-f]{6}$ ]]; then
  echo "demo: $choice is neither a colour RRGGBB nor a tile file"; exit 2
fi
xvfb-run -a -s "-screen 0 1280x1024x24" bash "$root/scripts/demo-dialog.sh" "$choice" "$out"
echo "demo: the input is $out/sample.png, the result $out/result.png," \
  "the dialog as the user saw it $out/dialog.png"
