#!/usr/bin/env bash
# Planted-fault check: applies each one-line fault of tests/mutants.txt (its format is
# described at the top of that file), rebuilds the trees that compile the file, runs the
# tests that can see it and takes the fault back. Prints per fault
#   CAUGHT <id> <file> by <test>  |  MISSED <id> <file>: <what it breaks>  |  NOBUILD <id> <file>
# (and BAD, EQUIVALENT or ERROR for entries not run or not run through), the time taken, and last
#   mutants: N caught of M        (M counts the faults that built)
# Usage: mutants.sh [ID...] [--file TEXT]   only those ids / only files whose path has TEXT
# The file under test is copied aside before each fault and copied back on any exit or
# interrupt; a copy left by a killed run is put back at the next start.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
state=$root/build/mutants  # the copy aside, logs, test tables, the Wine prefix
export TESSELLUM_WINEPREFIX=$state/wineprefix
xvfb=(xvfb-run -a -s "-screen 0 1280x1024x24")
ctest_args=(--stop-on-failure --no-tests=ignore --timeout 240)  # native tests have no timeout of their own

# ctest_first_then_rest TREE FIRST_REGEX LOG [ARGS]: the likely tests, then, only if they
# all passed, the others. Non-zero when a test failed.
ctest_first_then_rest() {
  local dir=$root/build/$1 first=${2:-^\$} log=$3
  shift 3
  ctest --test-dir "$dir" "${ctest_args[@]}" "$@" -R "$first" >>"$log" 2>&1 &&
    ctest --test-dir "$dir" "${ctest_args[@]}" "$@" -E "$first" >>"$log" 2>&1
}

# The modes the script runs itself in: one tree's tests; under xvfb-run, the fresh Wine
# prefix with the architecture check as the test command makes it, or one Windows tree's tests.
case "${1:-}" in
  --tests) shift; ctest_first_then_rest "$@"; exit ;;
  --wine-setup | --wine-tests)
    source "$root/scripts/wine-env.sh"
    if [ "$1" = --wine-setup ]; then
      wine_prefix_fresh
      wine_check_architectures "$root/build/x64/tessellum-host.exe" "$root/build/x86/tessellum-host.exe"
      exit
    fi
    wine_display_fresh
    wine_server -p 2>/dev/null  # one server for the tree's tests: each starts faster
    # The first program of a persistent server starts Wine's services, which inherit its
    # output and keep it open: given ctest's, the first test would wait out its timeout.
    wine_exec x64 "$root/build/x64/tessellum-host.exe" --help >/dev/null 2>&1
    ctest_first_then_rest "$2" "$3" "$4"
    status=$?
    wine_server -k 2>/dev/null
    exit $status ;;
esac

# --- Never leave a fault behind ---
restore() {
  [ -f "$state/backup.path" ] || return 0
  cp "$state/backup.file" "$root/$(cat "$state/backup.path")" &&
    rm -f "$state/backup.path" "$state/backup.file"
}
child=""
run_bg() {  # a command as a process group of its own, so that an interrupt ends all of it
  setsid "$@" &
  child=$!
  wait "$child" || { local status=$? && child="" && return $status; }
  child=""
}
exec 3>&1  # the output of the run, whatever a command's output is redirected to
interrupted() {  # SIGNAL
  [ -n "$child" ] && kill -TERM -- "-$child" 2>/dev/null
  (source "$root/scripts/wine-env.sh" && wine_server -k 2>/dev/null)
  restore
  echo "mutants: stopped by SIG$1; the tree is restored" >&3
  exit 130
}
trap 'interrupted INT' INT
trap 'interrupted TERM' TERM
trap restore EXIT
mkdir -p "$state/logs"
[ -f "$state/backup.path" ] && echo "mutants: restoring $(cat "$state/backup.path"), left by a killed run"
restore || exit 1
products=(host color storage controls dialog resources)
if [ -n "$(git -C "$root" status --porcelain -- "${products[@]}")" ]; then
  echo "mutants: refusing to run: the product files have uncommitted changes" && exit 1
fi

renice -n 10 -p $$ >/dev/null 2>&1 || true  # the machine is shared
started=$SECONDS
"$root/scripts/setup.sh" || exit 1
"$root/scripts/build.sh" || exit 1
mkdir -p "$root/build/screenshots"  # where the tests write their pictures

# --- The list ---
declare -A path find rep breaks hint equiv
ids=() id=""
while IFS= read -r line || [ -n "$line" ]; do
  case "$line" in
    '#'* | '') continue ;;
    \[*\]*) id=${line#[} && id=${id%%]*} && ids+=("$id") && path[$id]=${line#*] } ;;
    *:*)
      key=${line%%:*} value=${line#*:}
      value=${value#"${value%%[! ]*}"}
      case "$key" in
        find) find[$id]=$value ;; replace) rep[$id]=$value ;; breaks) breaks[$id]=$value ;;
        tests) hint[$id]=$value ;; equivalent) equiv[$id]=$value ;;
        *) echo "mutants: unknown key '$key' in entry $id" ;;
      esac ;;
  esac
done <"$root/tests/mutants.txt"
chosen=() only=""
while [ $# -gt 0 ]; do
  case "$1" in --file) only=$2 && shift ;; *) chosen+=("$1") ;; esac
  shift
done
[ ${#chosen[@]} -gt 0 ] || chosen=("${ids[@]}")

# --- Wine, and a baseline: a suite that fails on the clean tree would catch everything ---
run_bg "${xvfb[@]}" bash "$0" --wine-setup >"$state/wine.txt" 2>&1
cat "$state/wine.txt"
grep -q 'x64 programs run' "$state/wine.txt" || { echo "mutants: x64 programs must run"; exit 1; }
export TESSELLUM_WINE_X64=1 TESSELLUM_WINE_X86=0
trees=(native x64)
if grep -q 'x86 programs run' "$state/wine.txt"; then TESSELLUM_WINE_X86=1 && trees+=(x86); fi
for tree in "${trees[@]}"; do
  # Each test's subsystem: the tests/<folder> in its command or where it was added.
  ctest --test-dir "$root/build/$tree" --show-only=json-v1 | python3 -c '
import json, re, sys
d = json.load(sys.stdin); g = d["backtraceGraph"]
for t in d["tests"]:
    where, n = t.get("command") or [], t.get("backtrace")
    while n is not None: where, n = where + [g["files"][g["nodes"][n]["file"]]], g["nodes"][n].get("parent")
    print(t["name"], (re.findall(r"/tests/(\w+)/", " ".join(where)) + ["-"])[0])' >"$state/$tree.tests"
  log=$state/logs/baseline-$tree.log
  rm -f "$log"
  if [ "$tree" = native ]; then run_bg bash "$0" --tests native "" "$log" -j2
  else run_bg "${xvfb[@]}" bash "$0" --wine-tests "$tree" "" "$log"; fi
  [ $? = 0 ] || { echo "mutants: the $tree tests fail on the clean tree (see $log)"; exit 1; }
done

# The regex of the tests to run first: those of the file's subsystem and those named.
first_tests() {  # TREE FILE HINT
  local names
  names=$(awk -v sub_="${2%%/*}" '$2 == sub_ { print $1 }' "$state/$1.tests")
  [ -n "$3" ] && names+=$'\n'$(cut -d' ' -f1 "$state/$1.tests" | grep -E -- "$3")
  names=$(grep -v '^$' <<<"$names" | sort -u | paste -sd'|')
  [ -z "$names" ] || echo "^($names)\$"
}
# The test that failed, from ctest's summary; a timeout is what a host sees as a hang.
failed_test() {
  sed -n '/The following tests FAILED:/{n;p;q}' "$1" |
    sed -E 's/^[[:space:]]*[0-9]+ - //; s/ \(Timeout\)$/ (timeout)/; s/ \([^)]*\)$//'
}
compiled_in() {  # FILE TREE: the file is a source of, or included by, some object there
  grep -rqF --include='*.d' --include='*.make' "$root/$1" "$root/build/$2"
}

caught=0 counted=0
for id in "${chosen[@]}"; do
  file=${path[$id]:-}
  [ -n "$only" ] && [[ "$file" != *"$only"* ]] && continue
  if [ -n "${equiv[$id]:-}" ]; then echo "EQUIVALENT $id $file: ${equiv[$id]}" && continue; fi
  if [[ ! "$file" =~ ^(host|color|storage|controls|dialog|resources)/ ]] || [ ! -f "$root/$file" ] ||
    [ -z "${find[$id]:-}" ] || [ -z "${rep[$id]+set}" ]; then
    echo "BAD $id $file: no such entry, not a product file, or no find or replace line" && continue
  fi
  log=$state/logs/$id.log
  : >"$log"
  begun=$SECONDS
  cp "$root/$file" "$state/backup.file" && echo "$file" >"$state/backup.path"
  count=$(python3 - "$root/$file" "${find[$id]}" "${rep[$id]}" <<'PY'
import sys
name, old, new = sys.argv[1:]
text = open(name, encoding="latin-1", newline="").read()
if text.count(old) != 1:
    sys.exit(print(text.count(old)))
open(name, "w", encoding="latin-1", newline="").write(text.replace(old, new))
PY
  )
  if [ -n "$count" ] || [ "$(git -C "$root" diff --numstat -- "$file" | cut -f1,2)" != $'1\t1' ]; then
    echo "BAD $id $file: the find text must occur once and the fault change one line" && restore
    continue
  fi

  # Native first (it is fast), then the Windows trees; the first failing test ends it.
  outcome=missed
  for tree in "${trees[@]}"; do
    compiled_in "$file" "$tree" || continue
    run_bg cmake --build "$root/build/$tree" -j2 >>"$log" 2>&1 || { outcome=nobuild && break; }
    first=$(first_tests "$tree" "$file" "${hint[$id]:-}")
    if [ "$tree" = native ]; then
      run_bg bash "$0" --tests native "$first" "$log" -j2
    elif ! compiled_in "$file" native &&
      ! run_bg ctest --test-dir "$root/build/native" "${ctest_args[@]}" -R PluginImage >>"$log" 2>&1; then
      false  # the native tests that read both built plug-ins see what only Windows compiles
    else
      run_bg "${xvfb[@]}" bash "$0" --wine-tests "$tree" "$first" "$log"
    fi
    [ $? = 0 ] || { outcome=caught && break; }
  done
  restore
  echo "mutants: fault $id took $((SECONDS - begun)) s" >>"$log"
  case $outcome in
    caught)
      by=$(failed_test "$log")
      # Without a failing test named, the tests did not run through: no catch, no count.
      if [ -z "$by" ]; then echo "ERROR $id $file: the tests stopped, none failed (see $log)" && continue; fi
      caught=$((caught + 1)) counted=$((counted + 1))
      echo "CAUGHT $id $file by $by" ;;
    missed) counted=$((counted + 1)) && echo "MISSED $id $file: ${breaks[$id]:-}" ;;
    nobuild) echo "NOBUILD $id $file (see $log)" ;;
  esac
done

for tree in "${trees[@]}"; do  # every tree back to the clean sources
  run_bg cmake --build "$root/build/$tree" -j2 >"$state/logs/rebuild-$tree.log" 2>&1 ||
    echo "mutants: the clean $tree tree did not build again (see $state/logs/rebuild-$tree.log)"
done
elapsed=$((SECONDS - started))
echo "mutants: took $((elapsed / 60)) min $((elapsed % 60)) s"
echo "mutants: $caught caught of $counted"
