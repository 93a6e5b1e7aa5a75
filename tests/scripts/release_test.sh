#!/usr/bin/env bash
# The release as a user downloads it, packed twice from the built plug-ins: once as they
# are, once from copies made now (new file times, other modes) in another time zone. Both
# give the same bytes; the zip holds the two plug-ins as built, the guide with its
# pictures inside it, the licence, and checksums that hold.
# Usage: release_test.sh SOURCE_DIR BUILD_DIR
root=$1 build=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0
fail() { echo "FAILED: $*"; failed=1; }

bash "$root/scripts/pack-release.sh" "$build" "$scratch/first" || exit 1
mkdir -p "$scratch/copy/x64" "$scratch/copy/x86"
cp "$build/x64/Tessellum.8bf" "$scratch/copy/x64/"
cp "$build/x86/Tessellum.8bf" "$scratch/copy/x86/"
chmod 600 "$scratch"/copy/*/Tessellum.8bf
(TZ=Asia/Kolkata bash "$root/scripts/pack-release.sh" "$scratch/copy" "$scratch/second") \
  || exit 1
for file in Tessellum-1.5.zip Tessellum-1.5-setup.exe SHA256SUMS; do
  cmp -s "$scratch/first/$file" "$scratch/second/$file" || fail "$file differs from one run to the next"
done
(cd "$scratch/first" && sha256sum --check --quiet SHA256SUMS) || fail "the release's SHA256SUMS do not hold"

unpacked="$scratch/unpacked"
unzip -q "$scratch/first/Tessellum-1.5.zip" -d "$unpacked" || fail "the zip does not unpack"
listing=$(cd "$unpacked" && find . -type f -printf '%P\n' | LC_ALL=C sort | xargs)
[ "$listing" = "LICENSE.txt SHA256SUMS Tessellum.html x64/Tessellum.8bf x86/Tessellum.8bf" ] \
  || fail "the zip holds: $listing"
for arch in x64 x86; do
  cmp -s "$unpacked/$arch/Tessellum.8bf" "$build/$arch/Tessellum.8bf" || fail "the zip's $arch plug-in is not the build's"
done
(cd "$unpacked" && sha256sum --check --quiet SHA256SUMS) || fail "the zip's SHA256SUMS do not hold"
grep -q 'src="\.\./' "$unpacked/Tessellum.html" && fail "the guide points at pictures outside it"
[ "$failed" = 0 ] && echo "release: two runs gave the same bytes; the zip holds the plug-ins as built"
exit $failed
