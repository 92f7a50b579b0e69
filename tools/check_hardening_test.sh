#!/usr/bin/env bash
# Builds a small program as a release is built, then with one protection less each time, and expects
# check_hardening.sh to name that one and nothing else.
set -u
tools=$(cd "$(dirname "$0")" && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
passed=0 failed=0
control_flow=()
[ "$(uname -m)" = x86_64 ] && control_flow=(-fcf-protection=full)

for number in {1..40}; do
  echo "int function$number(int n) { return n + $number; }"
done >"$folder/small.cpp"
cat >>"$folder/small.cpp" <<'END'
#include <cstdio>
#include <cstring>
int main(int argc, char** argv) {
  char text[32];
  std::strcpy(text, argv[argc - 1]);
  return std::puts(text) < 0;
}
END

# expect FAULT|"" OPTION... : what the check says when the options are added.
expect() {
  local want=$1 output
  shift
  g++ -O2 -fPIE -pie -fstack-protector-strong -D_FORTIFY_SOURCE=2 "${control_flow[@]}" \
    -Wl,-z,relro,-z,now "$@" "$folder/small.cpp" -o "$folder/small" || { failed=$((failed + 1)); return; }
  output=$("$tools/check_hardening.sh" "$folder/small")
  output=${output#"$folder/small: "}
  if [ -z "$want" ] && [ -z "$output" ]; then passed=$((passed + 1))
  elif [ -n "$want" ] && [[ $output == *"$want"* && $output != *$'\n'* ]]; then passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "check_hardening: with $*: wanted <$want>, got <$output>"
  fi
}

expect ""
expect "position-independent" -fno-pie -no-pie
expect "can be executed" -Wl,-z,execstack
expect "read-only" -Wl,-z,norelro
expect "binds functions late" -Wl,-z,lazy
expect "stack protector" -fno-stack-protector
expect "checked library functions" -U_FORTIFY_SOURCE
[ "$(uname -m)" = x86_64 ] && expect "control-flow" -fcf-protection=none
echo "check_hardening: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
