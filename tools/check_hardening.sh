#!/usr/bin/env bash
# Checks that a program was built to withstand faults in itself: check_hardening.sh PROGRAM
# One line a fault on standard output; exit 1 when there is any.
set -u
[ $# -eq 1 ] && [ -f "$1" ] || { echo "usage: check_hardening.sh PROGRAM"; exit 2; }
program=$1
faults=0

# wants WHAT PATTERN READELF_OPTION... : the pattern is found in what readelf says.
wants() {
  local what=$1 pattern=$2
  shift 2
  LC_ALL=C readelf -W "$@" "$program" 2>/dev/null | grep -qE "$pattern" && return
  echo "$program: $what"
  faults=1
}

wants "is no position-independent executable" 'FLAGS_1.*PIE' -d
wants "has a stack that can be executed, or says nothing about it" 'GNU_STACK.* RW +0x' -l
wants "does not make its tables read-only (-z relro)" 'GNU_RELRO' -l
wants "binds functions late (-z now)" 'FLAGS_1.*NOW' -d
wants "has no stack protector" 'UND __stack_chk_fail(@|$)' --dyn-syms
wants "uses no checked library functions (_FORTIFY_SOURCE)" 'UND __[a-z0-9_]+_chk(@|$)' --dyn-syms
# The C library's start code is not marked in Debian 12, so the program as a whole is not either:
# what counts is that its functions begin with the landing mark. Start code brings a few of its own.
case $(LC_ALL=C readelf -h "$program" 2>/dev/null) in
  *X86-64*)
    [ "$(objdump -d --no-show-raw-insn "$program" 2>/dev/null | grep -c endbr64)" -ge 32 ] || {
      echo "$program: has no control-flow protection"
      faults=1
    } ;;
esac
exit $faults
