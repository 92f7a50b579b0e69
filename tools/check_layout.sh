#!/usr/bin/env bash
# Checks that folders include only downwards, that library headers stay in their folders, that
# platform conditionals stay in the hosts and device stores, and that what is written in one place
# alone stands nowhere else. Rules: layout_rules.txt beside this.
# Usage: check_layout.sh [ROOT]. One line a fault on standard output; exit 1 when there is any.
set -u
tools=$(cd "$(dirname "$0")" && pwd)
cd "${1:-$tools/..}" || exit 2
rules="$tools/layout_rules.txt"

files=$(find . -path ./build -prune -o \( -name '*.h' -o -name '*.cpp' -o -name '*.inc' \) -print |
  sed 's,^\./,,' | grep -vE '^(build|tests|bench|fuzz)[-/]' | sort)
[ -n "$files" ] || { echo "check_layout: no sources below $PWD"; exit 2; }

# shellcheck disable=SC2086
awk -v rules="$rules" '
  BEGIN {
    while ((getline line < rules) > 0) {
      if (line ~ /^#/ || line ~ /^[ \t]*$/) continue
      if (line ~ /^only /) {
        n = split(line, word, " ")
        files_of = ""
        for (i = 3; i <= n; ++i) files_of = files_of " " word[i]
        only[word[2]] = files_of
        continue
      }
      split(line, half, ":")
      if (half[1] ~ /^library /) {
        libraries[substr(half[1], 9)] = half[2] " "
      } else {
        allowed[half[1]] = half[2] " "
      }
    }
  }
  # The longest rule folder that holds the path.
  function folder_of(path,   best, f) {
    best = ""
    for (f in allowed)
      if (index(path, f "/") == 1 && length(f) > length(best)) best = f
    return best
  }
  function report(text) { printf "%s:%d: %s\n", FILENAME, FNR, text; faults = 1 }
  FNR == 1 { here = folder_of(FILENAME); if (here == "") report("no rule for this folder") }
  /^[ \t]*#[ \t]*include[ \t]*"/ {
    split($0, part, "\"")
    there = folder_of(part[2])
    if (there == "") report("includes \"" part[2] "\", which is in no folder of the project")
    else if (there != here && index(allowed[here], " " there " ") == 0)
      report(here " may not include " there " (\"" part[2] "\")")
  }
  /^[ \t]*#[ \t]*include[ \t]*</ {
    name = $0; sub(/^[^<]*</, "", name); sub(/>.*/, "", name)
    for (library in libraries) {
      if (index(name, library) != 1) continue
      ok = 0
      n = split(libraries[library], places, " ")
      for (i = 1; i <= n; ++i) if (places[i] != "" && index(FILENAME, places[i] "/") == 1) ok = 1
      if (!ok) report("<" name "> may not be used in " here)
    }
  }
  /^[ \t]*#[ \t]*(if|ifdef|ifndef|elif)/ && /_WIN32|WINCE|__linux__|__unix__|__APPLE__|_MSC_VER|Q_OS_/ {
    if (FILENAME !~ /^hosts\// && FILENAME !~ /^store\/[^\/]+\//)
      report("platform conditional outside the hosts and device stores")
  }
  {
    code = $0
    sub(/\/\/.*/, "", code)
    for (pattern in only) {
      if (code !~ pattern) continue
      ok = 0
      n = split(only[pattern], places, " ")
      for (i = 1; i <= n; ++i) if (index(FILENAME, places[i]) == 1) ok = 1
      if (!ok) report("\"" pattern "\" stands in" only[pattern] " alone: see there")
    }
  }
  END { exit faults }
' $files
