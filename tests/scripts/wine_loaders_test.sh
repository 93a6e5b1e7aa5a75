#!/usr/bin/env bash
# Each Windows program starts with the loader of its architecture, never through the
# `wine` script: with a `wine` on PATH that always fails (as Debian's does on a kernel
# without 32-bit support once wine32 is installed), x64 still runs, and the check of the
# test command fails when the x64 loader cannot run.
# Usage: wine_loaders_test.sh SOURCE_DIR X64_HOST X86_HOST
root=$1 x64_host=$2 x86_host=$3
stand_in=$(mktemp -d)
trap 'rm -rf "$stand_in"' EXIT
printf '#!/bin/sh\necho "wine: Exec format error" >&2\nexit 126\n' >"$stand_in/wine"
chmod +x "$stand_in/wine"
cp "$stand_in/wine" "$stand_in/broken-loader"
export PATH="$stand_in:$PATH"
source "$root/scripts/wine-env.sh"

failures=0
expect() {  # expect WHAT CONDITION_STATUS OUTPUT
  if [ "$2" != 0 ]; then
    echo "FAILED: $1; output:"
    sed 's/^/    /' <<<"$3"
    failures=$((failures + 1))
  fi
}

out=$(wine_check_architectures "$x64_host" "$x86_host")
expect "the probe passes with a broken wine script" $? "$out"
grep -q '^wine: x64 programs run' <<<"$out"
expect "the probe says that x64 runs" $? "$out"
grep -qE '^wine: x86 programs (run|cannot run here, .*: .+)' <<<"$out"
expect "the probe says what it found for x86, with a reason for a no" $? "$out"

out=$("$root/scripts/wine-run" x64 "$x64_host" --help 2>&1)
expect "wine-run starts x64 without the wine script (exit $?)" $? "$out"
grep -q 'Usage: tessellum-host' <<<"$out"
expect "the host's help came out" $? "$out"

out=$(TESSELLUM_WINE_LOADER_X64="$stand_in/broken-loader" wine_check_architectures "$x64_host" "$x86_host")
[ $? != 0 ]
expect "the check fails when x64 cannot run" $? "$out"
grep -q '^wine: FAILED: x64 programs cannot run here.*Exec format error' <<<"$out"
expect "the failure gives its reason in one line" $? "$out"

[ "$failures" = 0 ] && echo "wine_loaders: every check held"
[ "$failures" = 0 ]
