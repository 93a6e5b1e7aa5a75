# Sourced by setup.sh and its test. apt_conflicting_libraries reads the resolver's
# complaints (apt-get install -s output) on standard input and prints, one a line and
# without architecture, every package that a complaint names, on either side of the
# relation: "A : Depends: B (...) but it is not installable", "A : Breaks: B:i386
# (!= v) but w is to be installed", their continuation lines, and the like. Wine's own
# packages are left out: those are what is being installed.
apt_conflicting_libraries() {
  sed -nE \
    -e 's/^ *([a-z0-9][a-z0-9.+-]*)(:[a-z0-9]+)? : (Pre-?)?(Depends|Breaks|Conflicts|Recommends): ([a-z0-9][a-z0-9.+-]*)(:[a-z0-9]+)?.*/\1\n\5/p' \
    -e 's/^ +(Pre-?)?(Depends|Breaks|Conflicts|Recommends): ([a-z0-9][a-z0-9.+-]*)(:[a-z0-9]+)?.*/\3/p' \
    | grep -vE '^(wine|libwine)' | sort -u
}
