# Sourced by the scripts that print figures, which set $runs and $bin and stand in a folder of their
# own.

median() { sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

# whole WHAT COMMAND... : wall time and peak memory of the whole process.
whole() {
  local what=$1 i
  shift
  : >times
  for ((i = 0; i < runs; ++i)); do
    [ -z "${prepare-}" ] || eval "$prepare"
    /usr/bin/time -f '%e %M' -a -o times "$@" >last.txt 2>&1 || { cat last.txt times; exit 1; }
  done
  echo
  echo "$what"
  echo "  \$ ${*//$bin\//}"
  sed -n 's/^[0-9]* imported, .*/  &/p' last.txt
  awk '{ print $1 * 1000 }' times | median | sed 's/.*/  & ms, median of '"$runs"' whole processes/'
  awk '{ print $2 }' times | sort -n | tail -n 1 | awk '{ printf "  %.1f MiB at most\n", $1 / 1024 }'
}

# paint WHAT COMMAND... : what --measure start says, and the process's peak memory.
paint() {
  local what=$1 i
  shift
  : >times
  : >paints
  for ((i = 0; i < runs; ++i)); do
    [ -z "${prepare-}" ] || eval "$prepare"
    /usr/bin/time -f '%M' -a -o times "$@" >last.txt 2>&1 || { cat last.txt times; exit 1; }
    sed -n 's/^first paint: \([0-9]*\) ms.*$/\1/p' last.txt >>paints
  done
  [ "$(wc -l <paints)" -eq "$runs" ] || { cat last.txt; exit 1; }
  echo
  echo "$what"
  echo "  \$ ${*//$bin\//}"
  median <paints | sed 's/.*/  first paint & ms after process start, median of '"$runs"'/'
  sort -n times | tail -n 1 | awk '{ printf "  %.1f MiB at most\n", $1 / 1024 }'
}
