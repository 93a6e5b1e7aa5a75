#!/usr/bin/env bash
# The installer as an administrator meets it, in a 64-bit prefix of its own: a 64-bit and
# a 32-bit Photoshop named in the registry's two views. A silent install puts the build
# of each one's architecture into its Plug-ins folder; the page that lists the folders,
# shown on the screen, is saved in build/screenshots; a silent uninstall, started as the
# list of installed programs names it, removes the plug-ins and nothing of the user's.
# Usage: installer_test.sh SOURCE_DIR BUILD_DIR (on a screen: DISPLAY set)
root=$1 build=$2
scratch=$(mktemp -d)
export TESSELLUM_WINEPREFIX="$scratch/prefix"
source "$root/scripts/wine-env.sh"
trap 'wine_server -k 2>/dev/null; rm -rf "$scratch"' EXIT

(unset DISPLAY; wine_prefix_fresh)
# NSIS makes 32-bit installers.
if [ "$(wine_probe x86 "$build/x86/tessellum-host.exe" 2>"$scratch/why")" != 1 ]; then
  echo "SKIPPED: the installer is a 32-bit program: $(cat "$scratch/why")"
  exit 77
fi
bash "$root/scripts/pack-release.sh" "$build" "$scratch/release" || exit 1
setup="$scratch/release/Tessellum-1.5-setup.exe"

failed=0
fail() { echo "FAILED: $*"; failed=1; }
add() { wine_exec "$1" reg.exe add "$2" /v "$3" /d "$4" /f >/dev/null 2>&1 || fail "reg add $2"; }
drive="$WINEPREFIX/drive_c"
ps64="$drive/Program Files/Adobe/Adobe Photoshop 2024/Plug-ins"
ps32="$drive/Program Files (x86)/Adobe/Adobe Photoshop CS6/Plug-ins"
mkdir -p "$ps64" "$ps32"
# Photoshop's own form ends in a backslash; the other is taken too.
add x64 'HKLM\SOFTWARE\Adobe\Photoshop\180.0' ApplicationPath 'C:\Program Files\Adobe\Adobe Photoshop 2024\'
add x86 'HKLM\SOFTWARE\Adobe\Photoshop\60.0' ApplicationPath 'C:\Program Files (x86)\Adobe\Adobe Photoshop CS6'

bounded 120 "the silent install" wine_exec x86 "$setup" /S || fail "the silent install ended with exit $?"
cmp -s "$ps64/Tessellum.8bf" "$build/x64/Tessellum.8bf" || fail "the 64-bit Photoshop lacks the x64 build"
cmp -s "$ps32/Tessellum.8bf" "$build/x86/Tessellum.8bf" || fail "the 32-bit Photoshop lacks the x86 build"
[ -f "$drive/Program Files/Tessellum/Uninstall.exe" ] || fail "no uninstaller in the 64-bit Program Files"

# The page that lists the folders, as a user sees it: after the licence (I Agree is
# button 1), the first Photoshop's box is control 1201. Cancel (2) ends the installer.
locate() { wine_exec x64 "$build/x64/find-control.exe" "Tessellum 1.5 Setup " "$@" 2>/dev/null | tr -d "\r"; }
place() {  # place ID: where the control stands, once it is there
  local at
  for _ in $(seq 1 100); do
    at=$(locate "$1") && [ -n "$at" ] && { echo "$at"; return 0; }
    sleep 0.2
  done
  return 1
}
press() {  # press ID: a real click on it
  local at
  at=$(place "$1") || return 1
  read -r _ left top right bottom <<<"$at"
  xdotool mousemove $(((left + right) / 2)) $(((top + bottom) / 2)) sleep 0.3 click 1
}
wine_exec x86 "$setup" >/dev/null 2>&1 &
shown=$!
sleep 1
press 1 || fail "the installer's window did not come up"
shot="$build/screenshots/installer_folders_page.png"
mkdir -p "$build/screenshots"
place 1201 >/dev/null && sleep 0.5 && locate --shot "$shot" 0 >/dev/null \
  || fail "the page of folders did not come up"
press 2 || kill $shown 2>/dev/null
# Cancel's exit status is the installer's own; only a hang fails here.
wait_for_exit $shown 30 "the installer, after Cancel," || [ $? != 124 ] || failed=1

# The user's: a library beside the plug-in, and the folder the plug-in reads it from.
echo "the user's lists" >"$ps64/Tessellum.dat"
add x64 'HKLM\Software\Quarry\Tessellum\1.x' path 'C:\Program Files\Adobe\Adobe Photoshop 2024\Plug-ins\'
quiet=$(wine_exec x64 reg.exe query 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Tessellum' \
  /v QuietUninstallString 2>/dev/null | tr -d '\r' | sed -n 's/.*REG_SZ *//p')
[[ "$quiet" =~ ^\"(.*)\"\ /S$ ]] || fail "no silent uninstall in the list of installed programs: '$quiet'"
bounded 120 "the silent uninstall" wine_exec x86 "${BASH_REMATCH[1]}" /S ||
  fail "the silent uninstall ended with exit $?"
# The uninstaller goes on from a copy of itself: the server ends with it.
bounded 60 "the uninstaller's copy" wine_server -w || fail "the uninstaller's copy did not end"
[ -e "$ps64/Tessellum.8bf" ] || [ -e "$ps32/Tessellum.8bf" ] && fail "a plug-in is still there"
[ -e "$drive/Program Files/Tessellum" ] && fail "Program Files\\Tessellum is still there"
wine_exec x64 reg.exe query 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Tessellum' \
  >/dev/null 2>&1 && fail "the uninstall entry is still there"
[ -f "$ps64/Tessellum.dat" ] || fail "the uninstaller removed the user's library"
kept=$(wine_exec x64 reg.exe query 'HKLM\Software\Quarry\Tessellum\1.x' /v path 2>&1) \
  || fail "the uninstaller removed the plug-in's registry value (reg.exe said: $(tr -d '\r' <<<"$kept" | head -n 3))"
[ "$failed" = 0 ] && echo "installer: both Photoshops got their build; the uninstaller left the user's library and settings"
exit $failed
