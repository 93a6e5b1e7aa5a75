#!/usr/bin/env bash
# The set-up's reading of the resolver's complaints: every form names its libraries.
source "$(dirname "$0")/../../scripts/apt-conflicts.sh"
got=$(apt_conflicting_libraries <<'OUT'
Some packages could not be installed. This may mean that you have
The following packages have unmet dependencies:
 libgstreamer-plugins-base1.0-0 : Breaks: libgstreamer-plugins-base1.0-0:i386 (!= 1.22.0-3+deb12u7) but 1.22.0-3+deb12u6 is to be installed
 libfreetype6:i386 : Depends: libpng16-16:i386 (>= 1.6.2-1) but it is not installable
 libgphoto2-6:i386 : Depends: libgd3:i386 (>= 2.1.0~alpha~) but it is not installable
                     Depends: libexif12:i386 (>= 0.6.22) but it is not installable
 libxml2:i386 : Depends: liblzma5:i386 (= 5.4.1-0.2) but 5.4.1-1 is to be installed
 wine32:i386 : Depends: libwine:i386 (= 8.0~repack-4) but it is not going to be installed
 wine64 : PreDepends: wine-stable (= 8.0) but it is not going to be installed
E: Unable to correct problems, you have held broken packages.
OUT
)
want="libexif12
libfreetype6
libgd3
libgphoto2-6
libgstreamer-plugins-base1.0-0
liblzma5
libpng16-16
libxml2"
if [ "$got" = "$want" ]; then
  echo "apt_conflicts: every complaint read"
else
  printf 'apt_conflicts: wanted\n%s\ngot\n%s\n' "$want" "$got"
  exit 1
fi
