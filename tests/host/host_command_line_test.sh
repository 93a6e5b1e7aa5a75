#!/usr/bin/env bash
# Our host's command line as a user meets it: every bad input gets a clear message and
# a non-zero exit, never a crash; a good run writes its PNG.
# Usage: host_command_line_test.sh WINE_RUN ARCH BUILD_DIR
wine_run=$1 arch=$2 build=$3
host="$build/tessellum-host.exe"
plugin="$build/Tessellum.8bf"
other=$([ "$arch" = x64 ] && echo x86 || echo x64)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

"$wine_run" "$arch" "$host" --help >"$work/help" 2>&1
status=$?
[ "$status" = 77 ] && { cat "$work/help"; exit 77; }

passed=0 failed=0
check() {  # check NAME EXPECTED_STATUS EXPECTED_TEXT ARGS...
  local name=$1 want=$2 text=$3
  shift 3
  "$wine_run" "$arch" "$host" "$@" >"$work/out" 2>&1
  local got=$?
  if [ "$got" = "$want" ] && grep -qF -- "$text" "$work/out"; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "FAILED: $name: exit $got (wanted $want), output:"
    sed 's/^/    /' "$work/out"
    echo "    (wanted the text: $text)"
  fi
}

# Inputs made here: a PNG, a damaged PNG, a file that is no plug-in, stored parameters.
printf '\x89PNG\r\n\x1a\nthis is not really a png' >"$work/damaged.png"
printf 'MZ but nothing more' >"$work/fake.8bf"
echo "plain text" >"$work/text.8bf"
cp "$host" "$work/program.8bf"
native="$build/../native"
"$native/make-sample" 8 6 "$work/in.png" || exit 1
printf 'grid 2\nrow 336699 6699CC\nrow 6699CC 336699\n' >"$work/tile.txt"
"$native/make-tile" "$work/tile.txt" "$work/tile.params" >/dev/null || exit 1

check "help" 0 "Usage: tessellum-host" --help
check "info" 0 "entry point: ENTRYPOINT" --info "$plugin"
check "missing plug-in" 2 "cannot open" "$work/none.8bf" "$work/in.png" "$work/out.png"
check "not a plug-in" 2 "not a Windows program or library" "$work/text.8bf" "$work/in.png" "$work/out.png"
check "cut-short plug-in" 2 "fake.8bf" "$work/fake.8bf" "$work/in.png" "$work/out.png"
check "a program" 2 "is a program, not a plug-in" "$work/program.8bf" "$work/in.png" "$work/out.png"
check "other architecture" 2 "build of this host" "$build/../$other/Tessellum.8bf" "$work/in.png" "$work/out.png"
check "missing image" 2 "cannot read" "$plugin" "$work/none.png" "$work/out.png"
check "damaged image" 2 "as a PNG image" "$plugin" "$work/damaged.png" "$work/out.png"
check "bad rectangle" 2 "--rect must be a whole number" --rect 1,2,x,4 "$plugin" "$work/in.png" "$work/out.png"
check "rectangle outside" 2 "is not inside the 8 x 6 image" --rect 0,0,7,8 "$plugin" "$work/in.png" "$work/out.png"
check "repeat without params" 2 "--repeat needs --params" --repeat "$plugin" "$work/in.png" "$work/out.png"
check "repeat with no file" 2 "there is no filter to repeat" --repeat --params "$work/none.params" "$plugin" "$work/in.png" "$work/out.png"
check "foreign params" 2 "is not a stored-parameters file" --params "$work/in.png" "$plugin" "$work/in.png" "$work/out.png"
check "unknown option" 2 "unknown option --frobnicate" --frobnicate
check "repeat" 0 "wrote" --repeat --params "$work/tile.params" "$plugin" "$work/in.png" "$work/out.png"
[ -s "$work/out.png" ] || { echo "FAILED: out.png was not written"; failed=$((failed + 1)); }
check "abort" 1 "not written" --repeat --abort-at 1 --params "$work/tile.params" "$plugin" "$work/in.png" "$work/out2.png"
[ -e "$work/out2.png" ] && { echo "FAILED: out2.png was written after a stopped run"; failed=$((failed + 1)); }
check "trace" 0 "progress 2 of 6" --trace --repeat --params "$work/tile.params" "$plugin" "$work/in.png" "$work/out.png"

echo "host command line ($arch): $passed passed, $failed failed"
[ "$failed" = 0 ]
