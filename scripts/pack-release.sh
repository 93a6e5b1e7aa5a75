#!/usr/bin/env bash
# The release's packing step, from built trees: the zip (both plug-ins, the user's guide,
# the licence, SHA256SUMS) and the Windows installer, the same bytes on every run from
# the same plug-ins and sources. release.sh builds first; the tests pack what is built.
# Usage: pack-release.sh BUILD_DIR OUT_DIR
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$1
mkdir -p "$2"
out=$(cd "$2" && pwd)
version=1.5

# Every date in the packages is one fixed moment: SOURCE_DATE_EPOCH if set, else the last
# commit's. The zip keeps local times, so the zone is fixed too, and so are the modes.
epoch=${SOURCE_DATE_EPOCH:-$(git -C "$root" log -1 --format=%ct 2>/dev/null || echo 1767225600)}
export TZ=UTC LC_ALL=C

stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
mkdir "$stage/x64" "$stage/x86"
cp "$build/x64/Tessellum.8bf" "$stage/x64/"
cp "$build/x86/Tessellum.8bf" "$stage/x86/"
sed 's/$/\r/' "$root/LICENSE" >"$stage/LICENSE.txt"  # Windows line ends, for every text editor there
# The guide in one file: its pictures go inside it.
guide=$(<"$root/release/Tessellum.html")
for picture in color-picker-tab pattern-fill-tab; do
  data="data:image/png;base64,$(base64 -w0 "$root/docs/$picture.png")"
  guide=${guide//"src=\"../docs/$picture.png\""/"src=\"$data\""}
done
printf '%s\n' "$guide" >"$stage/Tessellum.html"
sums=$(cd "$stage" && find . -type f -printf '%P\n' | sort | xargs sha256sum)
printf '%s\n' "$sums" >"$stage/SHA256SUMS"
find "$stage" -type f -exec chmod 644 {} +
find "$stage" -exec touch -h -d "@$epoch" {} +

zip="$out/Tessellum-$version.zip"
rm -f "$zip"
# -X: no owners or extra time fields; -D: no folder entries; the names in sorted order.
(cd "$stage" && find . -type f -printf '%P\n' | sort | zip -X -D -9 -q "$zip" -@)
# makensis stores each file's time (from the stage, fixed above) and nothing else of the
# moment: the time stamp in the installer's header is that of the NSIS stub it starts from.
makensis -V2 -WX -DVERSION="$version" -DSTAGE="$stage" -DOUTFILE="$out/Tessellum-$version-setup.exe" \
  "$root/release/Tessellum.nsi" >/dev/null
(cd "$out" && sha256sum "Tessellum-$version.zip" "Tessellum-$version-setup.exe" >SHA256SUMS)
