#!/usr/bin/env bash
# The demo's first run, on a screen: a fresh prefix made by a program with no display,
# then at once the real dialog, driven as the demo drives it (a click on the Fore box,
# a click on Fill). The dialog must come up and the result must be written.
# Usage: fresh_prefix_window_test.sh SOURCE_DIR (on a screen: DISPLAY set)
root=$1
scratch=$(mktemp -d)
export TESSELLUM_WINEPREFIX="$scratch/prefix"
source "$root/scripts/wine-env.sh"
trap 'wine_server -k 2>/dev/null; rm -rf "$scratch"' EXIT

(unset DISPLAY; wine_prefix_fresh)
"$root/build/native/make-sample" 640 480 "$scratch/sample.png" >/dev/null || exit 1
out=$(bash "$root/scripts/demo-dialog.sh" 3C78B4 "$scratch" 2>&1)
status=$?
if [ "$status" != 0 ] || [ ! -s "$scratch/result.png" ]; then
  echo "FAILED: the dialog right after a fresh prefix (exit $status):"
  sed 's/^/    /' <<<"$out"
  exit 1
fi
echo "fresh_prefix_window: the dialog came up at once and Fill wrote the result"
