#!/usr/bin/env bash
# Installs, on Debian 12, whatever the build and the tests need and is missing:
# compilers, GoogleTest, stb, Xvfb, and Wine for both architectures. Safe to run again;
# it only installs what is not there. It says what it found.
set -u

log() { echo "setup: $*"; }
as_root() { if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi; }
installed() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q 'install ok installed'; }

packages=(cmake make g++ python3 clang libclang-rt-14-dev googletest libgtest-dev libstb-dev
  g++-mingw-w64-i686 g++-mingw-w64-x86-64 mingw-w64-tools xvfb xauth clang-format)
missing=()
for p in "${packages[@]}"; do installed "$p" || missing+=("$p"); done

updated=0
update() {
  [ "$updated" = 1 ] && return
  # One stale index of the mirror may make this exit non-zero; what it fetched is usable.
  as_root apt-get update -qq || log "apt-get update reported a problem; going on"
  updated=1
}

if [ ${#missing[@]} -gt 0 ]; then
  log "installing ${missing[*]}"
  update
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
    "${missing[@]}" >/dev/null || { log "could not install ${missing[*]}"; exit 1; }
fi

# Wine: the 64-bit loader, and the 32-bit one beside it for the x86 plug-in.
wine_set=(wine wine64 wine32:i386 libgstreamer-plugins-base1.0-0:i386)
if installed wine64 && installed wine32:i386 && installed wine; then
  exit 0
fi
if ! dpkg --print-foreign-architectures | grep -qx i386; then
  as_root dpkg --add-architecture i386
  updated=0
fi
update

# A multi-arch library must have one version on both architectures. Where the i386
# index lags the amd64 one (a stale security index), pin both to the version the i386
# index has, and simulate again, until nothing is unmet.
pins=()
for round in 1 2 3 4 5; do
  out=$(as_root apt-get install -s -t bookworm --no-install-recommends --allow-downgrades \
    "${wine_set[@]}" "${pins[@]}" 2>&1)
  if ! grep -q '^E:' <<<"$out"; then break; fi
  libs=$(grep -oE '^ +[a-z0-9.+-]+(:i386)? : Depends: [a-z0-9.+-]+(:i386)? \(= ' <<<"$out" \
    | sed -E 's/^ +([a-z0-9.+-]+)(:i386)? : Depends: ([a-z0-9.+-]+)(:i386)?.*/\1 \3/' \
    | tr ' ' '\n' | sort -u)
  found=0
  for lib in $libs; do
    case "$lib" in wine*|libwine) continue ;; esac
    version=$(apt-cache madison "$lib:i386" 2>/dev/null | awk -F'|' 'NR==1{gsub(/ /,"",$2); print $2}')
    [ -n "$version" ] || continue
    if ! printf '%s\n' "${pins[@]}" | grep -qx "$lib=$version"; then
      pins+=("$lib=$version" "$lib:i386=$version")
      found=1
    fi
  done
  [ "$found" = 1 ] || break
  log "pinning ${pins[*]}"
done
log "installing Wine for x64 and x86"
if ! as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq -t bookworm \
  --no-install-recommends --allow-downgrades "${wine_set[@]}" "${pins[@]}" >/dev/null; then
  log "32-bit Wine could not be installed; x86 tests will be reported as skipped"
  installed wine64 && installed wine || as_root env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends wine wine64 >/dev/null \
    || { log "64-bit Wine could not be installed"; exit 1; }
fi
exit 0
