#!/usr/bin/env bash
# Checks what a person on Windows is given: check_windows_package.sh BUILD_DIR, which holds a
# finished build. Runs it under Wine, in WINEPREFIX and on DISPLAY. One line a fault, then
# "windows package: N passed, N failed"; exit 1 when anything failed.
set -u
[ $# -eq 1 ] && [ -f "$1/orvello.exe" ] || { echo "usage: check_windows_package.sh BUILD_DIR"; exit 2; }
build=$(cd "$1" && pwd)
cd "$(dirname "$0")/.." || exit 2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
passed=0 failed=0

check() {  # check WHAT COMMAND...
  local what=$1 output
  shift
  if output=$("$@" 2>&1); then passed=$((passed + 1)); else
    failed=$((failed + 1))
    echo "windows package: $what: $(printf %s "$output" | tail -n 3 | tr '\n' '|')"
  fi
}
is() { [ "$1" = "$2" ] || { echo "<$1> is not <$2>"; return 1; }; }
program=$build/orvello.exe
dump() { x86_64-w64-mingw32-objdump "$@"; }

check "the package can be made" tools/package_windows.sh "$build"
version=$(sed -nE 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
setup=$build/orvello-$version-setup.exe
zip=$build/orvello-$version-windows.zip

# What every such system has; nothing that the compiler or a library would have to bring along.
own=$(dump -p "$program" | sed -nE 's/^\tDLL Name: (.*)/\L\1/p' | sort -u |
  grep -vxE '(advapi32|comctl32|comdlg32|gdi32|imm32|kernel32|msimg32|msvcrt|ole32|oleacc|oleaut32|shell32|shlwapi|user32)\.dll')
check "only the system's libraries are wanted" is "$own" ""
check "the program is no larger than 6 MiB" test "$(stat -c %s "$program")" -le $((6 << 20))
check "no console window opens" grep -q "(Windows GUI)" <(dump -p "$program")
for part in 'PerMonitorV2' 'longPathAware.*true' 'Common-Controls' 'asInvoker'; do
  check "the program says $part" grep -qaE "$part" "$program"
done
check "the zip holds the program, its license and what to know" is \
  "$(python3 -m zipfile -l "$zip" | tail -n +2 | cut -d' ' -f1 | sort | tr '\n' ' ')" \
  "Orvello-$version/ Orvello-$version/LICENSE.txt Orvello-$version/README.txt Orvello-$version/orvello.exe "

# Installed without a question, started, and removed without the calendar.
reg() { wine reg query "$@" 2>/dev/null | tr -d '\r' | sed -nE 's/.*REG_SZ +//p'; }
ics='HKCU\Software\Classes\.ics'
wine reg add "$ics" /ve /d Other.Calendar /f >/dev/null 2>&1
check "it can be installed" wine "$setup" /S
home=$(wine cmd /c 'echo %LOCALAPPDATA%' 2>/dev/null | tr -d '\r')
installed=$(winepath -u "$home\\Programs\\Orvello" 2>/dev/null)
check "it runs where it was installed" is \
  "$(wine "$installed/orvello.exe" --version 2>/dev/null | tr -d '\r')" "orvello $version"
check "calendar files open with it" is "$(reg "$ics" /ve)" "Orvello.Calendar"
check "the system can list it" is \
  "$(reg 'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvello' /v DisplayVersion)" \
  "$version"
wine "$installed/orvello.exe" settings set startmode 1 >/dev/null 2>&1
data=$(winepath -u "$(wine cmd /c 'echo %APPDATA%' 2>/dev/null | tr -d '\r')\\Orvello" 2>/dev/null)
check "its calendar is the person's" test -d "$data"
before=$(find "$data" -type f | sort)
# The uninstaller starts itself anew from elsewhere: _? has it stay, and itself.
check "it can be removed" wine "$installed/uninstall.exe" /S "_?=$home\\Programs\\Orvello"
check "nothing but the uninstaller, which was kept from it, stays" is \
  "$(ls "$installed" 2>/dev/null | grep -v '^uninstall.exe$')" ""
check "what opened calendars before does so again" is "$(reg "$ics" /ve)" "Other.Calendar"
check "the calendar stays" is "$(find "$data" -type f | sort)" "$before"

echo "windows package: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
