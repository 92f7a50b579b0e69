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
  share/icons/hicolor/48x48/apps/orvello.png share/man/man1/orvello.1.gz \
  share/bash-completion/completions/orvello share/metainfo/example.orvello.orvello.metainfo.xml; do
  check "$file is there" test -s "$root/$file"
done
# Libraries, headers and test programs are nobody's business.
check "nothing else is installed" is "$(cd "$work/root" 2>/dev/null && find . -type f |
  grep -vE '^\./usr/(bin/orvello|share/(applications/orvello\.desktop|man/man1/orvello\.1\.gz|bash-completion/completions/orvello|metainfo/[a-z.]+\.xml|doc/orvello/[a-zA-Z.]+|icons/hicolor/[0-9]+x[0-9]+/apps/orvello\.png))$')" ""
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
check "launchers offer a new appointment" grep -q '^Exec=orvello --new$' "$entry"
check "the desktop entry is valid" desktop-file-validate "$entry"
check "software centres can show it" appstreamcli validate --no-net \
  "$root/share/metainfo/example.orvello.orvello.metainfo.xml"

# What the program offers is in its manual page and completed by the shell.
manual=$work/orvello.1
gzip -dc "$root/share/man/man1/orvello.1.gz" >"$manual"
check "the manual page has no faults" is \
  "$(man --warnings -E UTF-8 -l -Tutf8 -Z "$manual" 2>&1 >/dev/null)" ""
offered=$("$root/bin/orvello" --help | grep -oE -- '--[a-z]+|^  orvello [a-z]+' | sed 's/.* //' | sort -u)
completion=$root/share/bash-completion/completions/orvello
check "there is something to look for" test "$(printf '%s\n' "$offered" | wc -l)" -gt 15
for word in $offered; do
  check "the manual page tells of $word" grep -qw -- "${word#--}" "$manual"
  check "the shell completes $word" grep -qw -- "${word#--}" "$completion"
done
complete_as() {  # complete_as WORD... : what the shell offers for the last of them
  bash -c 'compopt() { :; }; . "$0"; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _orvello
    printf "%s " "${COMPREPLY[@]}"' "$completion" "$@"
}
check "a command is completed" is "$(complete_as orvello ag)" "agenda "
check "an option is completed" is "$(complete_as orvello agenda --j)" "--json "
check "a setting's command is completed" is "$(complete_as orvello settings ex)" "export "

# Its warnings are advice.
check "lintian finds no errors" lintian --allow-root --fail-on error "$work/orvello.deb"

# Installed without a package, below a folder of one's own.
check "it can be installed" cmake --install "$build" --prefix "$work/own"
check "it runs where it was installed" is "$("$work/own/bin/orvello" --version)" \
  "orvello $(field Version)"
check "both install the same" is "$(cd "$work/own" && find . -type f | sort)" \
  "$(cd "$root" && find . -type f | sort)"

echo "packaging: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
