#!/usr/bin/env bash
# What a user downloads: sets up, builds both plug-ins, and packs them into out/release/:
# Tessellum-1.5.zip (both plug-ins, the user's guide, the licence, SHA256SUMS) and
# Tessellum-1.5-setup.exe, the Windows installer, with SHA256SUMS of the two beside them.
# Two runs from the same sources give the same bytes.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
"$root/scripts/build.sh"
out="$root/out/release"
bash "$root/scripts/pack-release.sh" "${TESSELLUM_BUILD_DIR:-$root/build}" "$out"
echo "release: $out"
(cd "$out" && cat SHA256SUMS)
