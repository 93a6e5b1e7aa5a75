# Sourced by the scripts that run Windows programs: a private Wine prefix inside the
# build tree, so nothing touches the user's own prefix or registry, and each program
# started by the loader of its own architecture. Debian's `wine` script starts the
# 32-bit loader whenever wine32 is installed, so on a kernel that cannot run 32-bit
# programs it cannot start even a 64-bit one: nothing here goes through it.
root=${root:?}
export WINEPREFIX="${TESSELLUM_WINEPREFIX:-$root/build/wineprefix}"  # a test may name its own
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
# The loaders; a test may point one at a stand-in.
: "${TESSELLUM_WINE_LOADER_X64:=/usr/lib/wine/wine64}"
: "${TESSELLUM_WINE_LOADER_X86:=/usr/lib/wine/wine}"

# wine_loader ARCH: the loader of ARCH (x64 or x86).
wine_loader() {
  case "$1" in
    x64) echo "$TESSELLUM_WINE_LOADER_X64" ;;
    x86) echo "$TESSELLUM_WINE_LOADER_X86" ;;
    *) echo "wine-env: unknown architecture $1" >&2; return 2 ;;
  esac
}

# wine_exec ARCH PROGRAM [ARGUMENTS...]: PROGRAM under the loader of ARCH. WINELOADER
# keeps the programs Wine starts by itself on the same loader.
wine_exec() {
  local loader
  loader=$(wine_loader "$1") || return 2
  shift
  WINELOADER="$loader" "$loader" "$@"
}

# wine_server [ARGUMENTS...]: the Wine server, 64-bit where it is installed.
wine_server() {
  local server
  for server in /usr/lib/wine/wineserver64 /usr/lib/wine/wineserver32; do
    [ -x "$server" ] && { "$server" "$@"; return; }
  done
  return 1
}

# wait_for_exit PID SECONDS WHAT: the status of process PID, a child of this shell, once it
# has ended; one that runs on past SECONDS is ended with its children, and WHAT is said
# not to have ended (status 124). A hung program fails its test at once, not at the
# test's time limit.
wait_for_exit() {
  local pid=$1 end=$((SECONDS + $2))
  while kill -0 "$pid" 2>/dev/null; do
    if [ "$SECONDS" -ge "$end" ]; then
      echo "FAILED: $3 did not end within $2 s" >&2
      pkill -P "$pid" 2>/dev/null
      kill "$pid" 2>/dev/null
      wait "$pid" 2>/dev/null
      return 124
    fi
    sleep 0.1
  done
  wait "$pid"
}

# bounded SECONDS WHAT COMMAND [ARGUMENTS...]: COMMAND (a function of these too), with the
# bound of wait_for_exit.
bounded() {
  local limit=$1 what=$2
  shift 2
  "$@" &
  wait_for_exit $! "$limit" "$what"
}

# wine_display_fresh: before a program with a window. The Wine server and the desktop
# that a program with no display started (wineboot, a console program) live on for a few
# seconds after it ends, and a program started in that time joins that desktop, which has
# no display, and cannot make a window. End the server and wait until it is gone, so the
# next program starts one of its own on this display.
wine_display_fresh() {
  wine_server -k 2>/dev/null || true
  wine_server -w 2>/dev/null || true
}

# wine_prefix_fonts: Wine's own fonts (fonts-wine) in the prefix's Fonts folder. Debian's
# Wine, started by its loaders directly, does not find them where the package puts
# them, and without them "MS Sans Serif" 8 is drawn with a wider font: every dialog
# would be laid out about 16% wider than on Windows.
wine_prefix_fonts() {
  local fonts="$WINEPREFIX/drive_c/windows/Fonts"
  [ -d /usr/share/wine/fonts ] && [ -d "$fonts" ] || return 0
  cp -n /usr/share/wine/fonts/* "$fonts/" 2>/dev/null || true
}

# wine_prefix_fresh: a new, empty prefix (once per test run), made by the 64-bit loader;
# its server is gone when it returns, so a program with a window may follow at once.
wine_prefix_fresh() {
  wine_server -k 2>/dev/null || true
  rm -rf "$WINEPREFIX" "$WINEPREFIX"-[0-9]*  # and its copies at other scales
  wine_exec x64 wineboot.exe -i >/dev/null 2>&1 || true
  # No window manager runs on the virtual screen: Wine draws captions and frames itself.
  local value
  for value in Managed Decorated; do
    wine_exec x64 reg.exe add 'HKCU\Software\Wine\X11 Driver' /v "$value" /d N /f \
      >/dev/null 2>&1 || true
  done
  wine_prefix_no_debugger
  wine_prefix_fonts
  wine_server -w 2>/dev/null || true
}

# wine_prefix_no_debugger: a program that crashes ends at once, with Wine's line "wine:
# Unhandled page fault ... at address ..." on its standard error. By default Wine starts
# its debugger on the crashed process, which holds it open until someone kills it: a
# test would wait out its time limit and say nothing. A debugger command that cannot be
# started makes Wine give up and end the process. Both views of the registry: 32-bit
# programs read the Wow6432Node copy.
wine_prefix_no_debugger() {
  local key
  for key in 'HKLM\Software' 'HKLM\Software\Wow6432Node'; do
    wine_exec x64 reg.exe add "$key\Microsoft\Windows NT\CurrentVersion\AeDebug" \
      /v Debugger /d '' /f >/dev/null 2>&1 ||
      echo "wine-env: could not turn off the debugger of crashed programs ($key)" >&2
  done
}

# wine_prefix_scaled DPI...: for each DPI a copy of the prefix, $WINEPREFIX-DPI, whose
# display has that many dots per inch (HKCU\Control Panel\Desktop LogPixels, read when
# its server starts). The files are hard links, cheap to make, but for the registry,
# which Wine rewrites; the programs the tests run write nothing else of the prefix's.
wine_prefix_scaled() {
  local dpi target reg
  for dpi in "$@"; do
    target="$WINEPREFIX-$dpi"
    rm -rf "$target"
    cp -al "$WINEPREFIX" "$target" || return 1
    for reg in system.reg user.reg userdef.reg; do
      rm -f "$target/$reg"
      cp -p "$WINEPREFIX/$reg" "$target/$reg"
    done
    WINEPREFIX="$target" wine_exec x64 reg.exe add 'HKCU\Control Panel\Desktop' /v LogPixels \
      /t REG_DWORD /d "$dpi" /f >/dev/null 2>&1 || return 1
    WINEPREFIX="$target" wine_server -w 2>/dev/null || true
  done
}

# wine_probe ARCH PROGRAM: prints 1 if the loader of ARCH runs PROGRAM (built for ARCH)
# here, else 0; the reason for a 0 goes to standard error.
wine_probe() {
  local loader out status
  loader=$(wine_loader "$1") || { echo 0; return; }
  if [ ! -x "$loader" ]; then
    echo "the $1 loader $loader is not installed" >&2
    echo 0
    return
  fi
  out=$(wine_exec "$1" "$2" --help 2>&1)
  status=$?
  if [ "$status" = 0 ]; then
    echo 1
  elif [ "$status" = 126 ] || grep -q 'Exec format error' <<<"$out"; then
    echo "this kernel cannot run $1 programs ($loader: Exec format error)" >&2
    echo 0
  else
    echo "$loader failed with exit $status: $(head -n 1 <<<"$out")" >&2
    echo 0
  fi
}

# wine_check_architectures X64_PROGRAM X86_PROGRAM: probes each loader on its own, says
# what it found and exports TESSELLUM_WINE_X64 and TESSELLUM_WINE_X86. Fails when x64
# programs cannot run: that is what current hosts load, and a run whose Windows half
# did not run is no pass.
wine_check_architectures() {
  local why
  why=$(mktemp)
  export TESSELLUM_WINE_X86=$(wine_probe x86 "$2" 2>"$why")
  if [ "$TESSELLUM_WINE_X86" = 1 ]; then
    echo "wine: x86 programs run ($(wine_loader x86))"
  else
    echo "wine: x86 programs cannot run here, so the x86 runtime tests are skipped: $(cat "$why")"
  fi
  export TESSELLUM_WINE_X64=$(wine_probe x64 "$1" 2>"$why")
  if [ "$TESSELLUM_WINE_X64" = 1 ]; then
    echo "wine: x64 programs run ($(wine_loader x64))"
  else
    echo "wine: FAILED: x64 programs cannot run here, so the plug-in that current hosts" \
      "load is untested: $(cat "$why")"
  fi
  rm -f "$why"
  [ "$TESSELLUM_WINE_X64" = 1 ]
}
