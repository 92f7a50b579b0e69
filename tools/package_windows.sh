#!/usr/bin/env bash
# package_windows.sh BUILD_DIR : makes orvello-VERSION-windows.zip and orvello-VERSION-setup.exe in
# BUILD_DIR out of the orvello.exe that was built there.
set -eu
[ $# -eq 1 ] && [ -f "$1/orvello.exe" ] || { echo "usage: package_windows.sh BUILD_DIR"; exit 2; }
build=$(cd "$1" && pwd)
cd "$(dirname "$0")/.."
version=$(sed -nE 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Where the program keeps what opened calendars before it, so that the installer's choice and the
# program's setting are one.
before=$(sed -nE 's/^constexpr wchar_t kBefore\[\] = L"(.*)";.*/\1/p' hosts/win32/win32_shell.cpp)
[ -n "$before" ] || { echo "package_windows: hosts/win32/win32_shell.cpp keeps no kBefore"; exit 1; }

folder=$work/Orvello-$version
mkdir "$folder"
cp "$build/orvello.exe" "$folder/"
# Every editor of that system knows these line ends, and what letters these are.
sed 's/$/\r/' LICENSE >"$folder/LICENSE.txt"
{ printf '\xEF\xBB\xBF'; sed 's/$/\r/' packaging/windows/README.txt; } >"$folder/README.txt"
rm -f "$build/orvello-$version-windows.zip" "$build/orvello-$version-setup.exe"
(cd "$work" && zip -q -9 -r "$build/orvello-$version-windows.zip" "Orvello-$version")
makensis -V2 -INPUTCHARSET UTF8 -DVERSION="$version" -DBEFORE="$before" \
  -DICON="$build/windows_parts/orvello.ico" -DPROGRAM="$folder/orvello.exe" \
  -DLICENSE="$folder/LICENSE.txt" -DREADME="$folder/README.txt" \
  -DOUTPUT="$build/orvello-$version-setup.exe" packaging/windows/orvello.nsi
ls "$build/orvello-$version-windows.zip" "$build/orvello-$version-setup.exe"
