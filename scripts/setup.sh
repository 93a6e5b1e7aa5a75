#!/usr/bin/env bash
# Installs, on Debian 12, whatever the build and the tests need and is missing:
# compilers, GoogleTest, stb, Xvfb with xdotool for the demo's clicks, and Wine for both
# architectures with its own fonts. Safe to run again; it only installs what is not there. It says what it
# found.
set -u

log() { echo "setup: $*"; }
as_root() { if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi; }
installed() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q 'install ok installed'; }

packages=(cmake make g++ python3 clang libclang-rt-14-dev googletest libgtest-dev libstb-dev
  g++-mingw-w64-i686 g++-mingw-w64-x86-64 mingw-w64-tools xvfb xauth clang-format xdotool
  fonts-wine)  # Wine's own "MS Sans Serif", Tahoma and Marlett: dialogs at Windows' metrics
packages+=(nsis zip unzip)  # the release: the installer (makensis) and the zip
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
# index lags the amd64 one (a stale security index), the resolver complains about the
# library or about a package that needs it. Pin each such library, on both
# architectures, to the newest version that both indexes offer, and simulate again
# until nothing is unmet. A named package whose versions agree is looked into in turn,
# since the library at fault may lie below it.
source "$(dirname "$0")/apt-conflicts.sh"
versions() { apt-cache madison "$1" 2>/dev/null | awk -F'|' '{gsub(/ /,"",$2); print $2}'; }
common_version() {  # the newest version of LIB that both architectures' indexes offer
  local v
  for v in $(versions "$1:i386"); do
    versions "$1:amd64" | grep -qxF "$v" && { echo "$v"; return; }
  done
}
pins=() examined=" "
simulate() { as_root apt-get install -s -t bookworm --no-install-recommends --allow-downgrades "$@" "${pins[@]}" 2>&1; }
queue=$(simulate "${wine_set[@]}" | apt_conflicting_libraries)
for round in 1 2 3 4 5 6 7 8; do
  [ -n "$queue" ] || break
  next=""
  for lib in $queue; do
    case "$examined" in *" $lib "*) continue ;; esac
    examined+="$lib "
    # The amd64 copy as installed, or as it would be: is that version there for i386?
    have=$(dpkg-query -W -f='${Version}' "$lib:amd64" 2>/dev/null)
    [ -n "$have" ] || have=$(versions "$lib:amd64" | head -n 1)
    if [ -n "$have" ] && ! versions "$lib:i386" | grep -qxF "$have"; then
      version=$(common_version "$lib")
      [ -n "$version" ] && pins+=("$lib=$version" "$lib:i386=$version")
    else
      next+=" $(simulate "$lib:i386" | apt_conflicting_libraries | tr '\n' ' ')"
    fi
  done
  queue=$next
done
[ ${#pins[@]} -gt 0 ] && log "pinning ${pins[*]}"
log "installing Wine for x64 and x86"
if ! as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq -t bookworm \
  --no-install-recommends --allow-downgrades "${wine_set[@]}" "${pins[@]}" >/dev/null; then
  log "32-bit Wine could not be installed; x86 tests will be reported as skipped"
  installed wine64 && installed wine || as_root env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends wine wine64 >/dev/null \
    || { log "64-bit Wine could not be installed"; exit 1; }
fi
exit 0
