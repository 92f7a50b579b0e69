#!/usr/bin/env bash
# Checks what would be installed: check_packaging.sh BUILD_DIR, which holds a finished build. One line
# a fault, then "packaging: N passed, N failed"; exit 1 when anything failed.
set -u
[ $# -eq 1 ] && [ -f "$1/CMakeCache.txt" ] || { echo "usage: check_packaging.sh BUILD_DIR"; exit 2; }
build=$(cd "$1" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export QT_QPA_PLATFORM=offscreen
passed=0 failed=0

check() {  # check WHAT COMMAND...
  local what=$1 output
  shift
  if output=$("$@" 2>&1); then passed=$((passed + 1)); else
    failed=$((failed + 1))
    echo "packaging: $what: $(printf %s "$output" | tail -n 3 | tr '\n' '|')"
  fi
}
is() { [ "$1" = "$2" ] || { echo "<$1> is not <$2>"; return 1; }; }

make_package() {
  (cd "$work" && umask 022 && cpack -G DEB --config "$build/CPackConfig.cmake" -B "$work/cpack") &&
    mv "$work"/cpack/*.deb "$work/orvello.deb"
}
check "the package can be made" make_package
check "the package can be unpacked" dpkg-deb -x "$work/orvello.deb" "$work/root"
if [ $failed -gt 0 ]; then
  echo "packaging: $passed passed, $failed failed"
  exit 1
fi
field() { dpkg-deb -f "$work/orvello.deb" "$1"; }
root=$work/root/usr

for file in bin/orvello share/applications/orvello.desktop share/doc/orvello/copyright \
  share/doc/orvello/README.md share/doc/orvello/changelog.gz \
  share/icons/hicolor/48x48/apps/orvello.png; do
  check "$file is there" test -s "$root/$file"
done
# Libraries, headers and test programs are nobody's business.
check "nothing else is installed" is "$(cd "$work/root" 2>/dev/null && find . -type f |
  grep -vE '^\./usr/(bin/orvello|share/(applications/orvello\.desktop|doc/orvello/[a-zA-Z.]+|icons/hicolor/[0-9]+x[0-9]+/apps/orvello\.png))$')" ""
for size in 16 32 48 96 192; do
  icon=$root/share/icons/hicolor/${size}x$size/apps/orvello.png
  # Width and height stand as two big-endian numbers at 16.
  check "the icon of $size is that large" is "$(od -An -tu1 -j18 -N2 "$icon" | tr -d ' ')" "0$size"
done
check "nobody but its owner can write" is "$(find "$work/root" -perm /022 ! -type l 2>&1)" ""

check "--help answers" "$root/bin/orvello" --help
check "the package has the program's version" is "orvello $(field Version)" "$("$root/bin/orvello" --version)"
for library in libqt6widgets6 libsqlite3-0 libical3; do
  check "the package wants $library" grep -q "$library" <(field Depends)
done
check "the package does not carry debugging symbols" \
  test "$(stat -c %s "$root/bin/orvello")" -lt 8000000

entry=$root/share/applications/orvello.desktop
check "launchers open calendars with it" grep -q '^MimeType=.*text/calendar;' "$entry"
check "launchers find the icon" grep -q '^Icon=orvello$' "$entry"
check "launchers hand over files" grep -qE '^Exec=orvello %F$' "$entry"
check "every line of the desktop entry is one" is \
  "$(grep -vE '^\[Desktop Entry\]$|^[A-Za-z]+(\[[a-z]+\])?=.+$' "$entry")" ""
# Its warnings are advice: a program with a window needs no manual page.
check "lintian finds no errors" lintian --allow-root --fail-on error "$work/orvello.deb"
command -v desktop-file-validate >/dev/null &&
  check "the desktop entry is valid" desktop-file-validate "$entry"

echo "packaging: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
