# Sourced by the scripts that run Windows programs: a private Wine prefix inside the
# build tree, so nothing touches the user's own prefix or registry, and a check of
# which architectures Wine really runs here.
root=${root:?}
export WINEPREFIX="$root/build/wineprefix"
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="

# wine_prefix_fresh: a new, empty prefix (once per test run).
wine_prefix_fresh() {
  wineserver -k 2>/dev/null || true
  rm -rf "$WINEPREFIX"
  wineboot -i >/dev/null 2>&1 || true
  # No window manager runs on the virtual screen: Wine draws captions and frames itself.
  wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1 || true
  wine reg add 'HKCU\Software\Wine\X11 Driver' /v Decorated /d N /f >/dev/null 2>&1 || true
}

# wine_probe ARCH PROGRAM: 1 if Wine runs PROGRAM (built for ARCH) here, else 0.
wine_probe() {
  if command -v wine >/dev/null && wine "$2" --help >/dev/null 2>&1; then echo 1; else echo 0; fi
}
