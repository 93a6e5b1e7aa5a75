#!/usr/bin/env bash
# The demo's run through the dialog, on a (virtual) screen: our host runs the x64 plug-in
# with the demo's colour as the paint program's foreground colour; the real dialog comes
# up; a real mouse click on the Fore box loads that colour into the sliders; the dialog
# is photographed over the image as the user saw it; a click on Fill lays the tile.
# Usage: demo-dialog.sh RRGGBB OUT_DIR (run by demo.sh)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
source "$root/scripts/wine-env.sh"
hex=$1 out=$2
red=$((16#${hex:0:2})) green=$((16#${hex:2:2})) blue=$((16#${hex:4:2}))

rm -f "$out/tile.params" "$out/result.png"  # a first use of the filter: the dialog asks
wine_display_fresh  # whatever ran before, the dialog comes up on this screen
wine_exec x64 "$root/build/x64/tessellum-host.exe" --foreground "$red,$green,$blue" \
  --params "$out/tile.params" --rect 60,80,420,560 \
  "$root/build/x64/Tessellum.8bf" "$out/sample.png" "$out/result.png" >"$out/host.log" 2>&1 &
host=$!
trap 'kill $host 2>/dev/null || true' EXIT

# Screen rectangles of the dialog's controls: "ID left top right bottom".
locate() {  # Wine writes the console lines with CR LF
  wine_exec x64 "$root/build/x64/find-control.exe" "Tessellum 1.5" "$@" 2>/dev/null | tr -d "\r"
}
click() { xdotool mousemove "$1" "$2"; sleep 0.3; xdotool click 1; sleep 0.7; }

place=""
for _ in $(seq 1 150); do
  place=$(locate 1035) && break
  kill -0 $host 2>/dev/null || break
  sleep 0.2
done
if [ -z "$place" ]; then
  echo "demo: the dialog did not come up"; cat "$out/host.log"; exit 1
fi
# The Fore / Back pair stands 28 pixels left of its label; the front box is its top left.
read -r _ left top _ _ <<<"$place"
click $((left - 28 + 5)) $((top + 5))

# The dialog as the user sees it: over the host's window, which shows the image.
wine_exec x64 "$root/build/x64/find-control.exe" "tessellum-host - sample.png" \
  --shot "$out/dialog.png" 0 >/dev/null 2>&1

read -r _ left top right bottom <<<"$(locate 1)"
click $(((left + right) / 2)) $(((top + bottom) / 2))
wait_for_exit $host 60 "the host, after the click on Fill," || { cat "$out/host.log"; exit 1; }
trap - EXIT
cat "$out/host.log"
