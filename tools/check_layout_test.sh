#!/usr/bin/env bash
# Seeds faults into a small tree and expects check_layout.sh to name each, and nothing else.
set -u
tools=$(cd "$(dirname "$0")" && pwd)
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
passed=0 failed=0

# expect FAULT|ok DESCRIPTION PATH LINE...
expect() {
  local want=$1 what=$2 path=$3 output
  shift 3
  rm -rf "${tree:?}"/*
  mkdir -p "$tree/base" "$tree/$(dirname "$path")"
  echo '#pragma once' > "$tree/base/text.h"
  printf '%s\n' "$@" > "$tree/$path"
  if output=$("$tools/check_layout.sh" "$tree"); then got=ok; else got=fault; fi
  if [ "$got" = "$want" ] && { [ "$want" = ok ] || [[ $output == "$path:"* ]]; }; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "check_layout: $what: wanted $want, got $got: $output"
  fi
}

expect ok 'downwards' calendar/a.h '#include "base/text.h"'
expect ok 'own folder' calendar/a.h '#include "calendar/b.h"'
expect fault 'upwards' base/a.h '#include "calendar/dates.h"'
expect fault 'views beside each other' editor/a.cpp '#include "views/month_layout.h"'
expect fault 'the core reaches a device store' store/a.cpp '#include "store/embedded/x.h"'
expect ok 'a device store reaches its logic' store/embedded/a.cpp '#include "store/record_store.h"'
expect fault 'SQLite in the core' store/a.cpp '#include <sqlite3.h>'
expect fault 'SQLite beside its layer' store/embedded/a.cpp '#include <sqlite3.h>'
expect ok 'SQLite in its layer' store/embedded/sqlite/a.cpp '#include <sqlite3.h>'
expect fault 'Qt above its host' app/a.cpp '#include <QString>'
expect fault 'libical in the core' calendar/a.cpp '#  include <libical/ical.h>'
expect fault 'a platform header in the core' settings/a.cpp '#include <unistd.h>'
expect fault 'a folder read in the exchange' exchange/a.cpp '#include <filesystem>'
expect fault 'files opened in the exchange' exchange/a.cpp '#include "files/input_file.h"'
expect fault 'the system in a portable host' hosts/headless/a.cpp '#include <sys/stat.h>'
expect fault 'a thread in a view' views/a.cpp '#include <thread>'
expect fault 'a lock in the store' store/a.h '#include <mutex>'
expect ok 'the drawing worker' app/a.h '#include <condition_variable>'
expect fault 'a signal that may throw' hosts/qt/a.cpp '  connect(a, b, this, c);'
expect fault 'one by its whole name' hosts/qt/a.cpp 'QObject::connect(a, b, this, c);'
expect ok 'a guarded signal' hosts/qt/a.cpp '  on_signal(a, b, this, c);  // not connect(a)'
expect ok 'a socket' hosts/linux/a.cpp '  if (::connect(socket, address, size) != 0) return;'
expect fault 'a widget whose events may throw' hosts/qt/a.h 'class A : public QWidget {'
expect ok 'a guarded one' hosts/qt/a.h 'class A : public Guarded<QWidget> {'
expect fault 'a thread that may throw' app/a.cpp '  std::thread([] {}).detach();'
expect ok 'the number of one' app/a.cpp '  std::thread::id number;'
expect fault 'SQLite beside its layer, by name' store/embedded/a.cpp '  sqlite3_open(path, &db);'
expect fault 'a platform conditional in a view' views/a.cpp '#ifdef _WIN32' '#endif'
expect ok 'a platform conditional in a host' hosts/qt/a.cpp '#ifdef __linux__' '#endif'
expect fault 'a folder without a rule' misc/a.cpp 'int x;'
expect fault 'an include from nowhere' app/a.cpp '#include "text.h"'
echo "check_layout: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
