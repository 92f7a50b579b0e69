#!/usr/bin/env bash
# Drives the program as a person does from a terminal: command_line.sh PROGRAM
# One line a failure, then "N passed, N failed"; exit 1 when anything failed.
set -u
[ $# -eq 1 ] && [ -x "$1" ] || { echo "usage: command_line.sh PROGRAM"; exit 2; }
program=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 2
export QT_QPA_PLATFORM=offscreen TZ=Europe/Berlin LC_ALL=C.UTF-8 HOME=$folder/home
unset XDG_DATA_HOME XDG_CONFIG_HOME XDG_STATE_HOME
passed=0 failed=0
# A sanitized program is slower and wants an address space beyond any limit.
patience=20 sanitized=no
grep -q __asan_init "$program" && patience=120 sanitized=yes

good() { passed=$((passed + 1)); }
bad() {  # bad WHAT [DETAIL]
  failed=$((failed + 1))
  echo "FAILED: $1${2:+: $(printf %s "$2" | tr '\n' '|' | head -c 400)}"
}
# run ARGUMENT... : fills $out, $err and $code.
run() {
  timeout $patience "$program" "$@" >out.txt 2>err.txt
  code=$?
  out=$(cat out.txt) err=$(cat err.txt)
}
expect_code() {  # expect_code WHAT CODE
  if [ "$code" -eq "$2" ]; then good; else bad "$1" "ended with $code, not $2: $err"; fi
}
expect_is() {  # expect_is WHAT GOT WANTED
  if [ "$2" = "$3" ]; then good; else bad "$1" "got <$2>, wanted <$3>"; fi
}
expect_has() {  # expect_has WHAT TEXT PART
  case "$2" in *"$3"*) good ;; *) bad "$1" "no <$3> in <$2>" ;; esac
}
# fails WHAT PART ARGUMENT... : the program ends with 1 and says that.
fails() {
  local what=$1 part=$2
  shift 2
  run "$@"
  expect_code "$what" 1
  expect_has "$what" "$err" "$part"
}
# calendar FILE : wraps the events on standard input.
calendar() {
  { printf 'BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:-//Test//EN\n'; cat; printf 'END:VCALENDAR\n'; } |
    sed 's/$/\r/' >"$1"
}
count() { "$program" agenda 2000-01-01 2040-01-01 --json --data "$1" 2>err.txt | grep -c '"oid"'; }
checksum() { cksum <"$1"; }

# ---- words
run --help
expect_code "help" 0
expect_has "help lists the commands" "$out" "orvello import FILE..."
run --version
expect_code "version" 0
expect_has "version says its name" "$out" "orvello "
run --no-such-option --data "$folder/unused"
expect_code "wrong usage" 2
expect_has "wrong usage points at the help" "$err" "--help"
if [ -e "$folder/unused" ]; then bad "a wrong command line leaves no files"; else good; fi

# ---- import, agenda, update, export
calendar first.ics <<'END'
BEGIN:VEVENT
UID:lunch@test
DTSTAMP:20260101T000000Z
DTSTART:20261106T130000
DTEND:20261106T140000
SUMMARY:Обед\, "late"
LOCATION:Cafe
CATEGORIES:Home,Big plans
CLASS:PRIVATE
X-COLOUR-OF-SOUP:green
BEGIN:VALARM
ACTION:DISPLAY
DESCRIPTION:x
TRIGGER:-PT10M
END:VALARM
END:VEVENT
BEGIN:VEVENT
UID:standup@test
DTSTAMP:20260101T000000Z
DTSTART:20261102T090000
DURATION:PT15M
RRULE:FREQ=WEEKLY;BYDAY=MO,WE,FR
EXDATE:20261106T090000
SUMMARY:Standup
END:VEVENT
BEGIN:VEVENT
UID:standup@test
DTSTAMP:20260101T000000Z
RECURRENCE-ID:20261109T090000
DTSTART:20261109T113000
DURATION:PT30M
SUMMARY:Standup moved
END:VEVENT
BEGIN:VEVENT
UID:fair@test
DTSTAMP:20260101T000000Z
DTSTART;VALUE=DATE:20261106
DTEND;VALUE=DATE:20261108
SUMMARY:Fair
TRANSP:TRANSPARENT
END:VEVENT
BEGIN:VEVENT
UID:call@test
DTSTAMP:20260101T000000Z
DTSTART:20261109T170000Z
DTEND:20261109T173000Z
SUMMARY:Call
END:VEVENT
END
run import first.ics --data data
expect_code "import" 0
expect_is "a series and its change count once" "$out" "4 imported, 0 updated, 0 skipped"
run import first.ics --data data
expect_is "the same file updates" "$out" "0 imported, 4 updated, 0 skipped"
expect_is "folders are private" "$(stat -c %a data)" 700
expect_is "files are private" "$(stat -c %a data/calendar.db)" 600

run agenda --data data --now 2026-11-06T10:00 --language ru
expect_code "agenda" 0
expect_is "agenda of the day that it is said to be" "$out" 'пятница, 6 ноября 2026
  All Day          Fair
  13:00-14:00      Обед, "late" [Cafe]'
run agenda 2026-11-09 --data data --language ru
expect_is "UTC is shown in the local zone" "$out" 'понедельник, 9 ноября 2026
  11:30-12:00      Standup moved
  18:00-18:30      Call'
run agenda 2026-11-06 2026-11-09 --json --data data
expect_code "agenda as JSON" 0
expect_is "agenda as JSON" "$(grep -o '"subject": "[^,]*' out.txt | cut -d'"' -f4 | tr '\n' ' ')" \
  'Fair Обед Standup moved Call '
run search ОБЕД cafe --data data --language ru
expect_is "a search over all years" "$out" 'пятница, 6 ноября 2026
  13:00-14:00      Обед, "late" [Cafe]'
run search moved --json --data data
expect_is "a changed occurrence is found" "$(grep -o '"start": "[^"]*' out.txt)" \
  '"start": "2026-11-09T11:30:00'
run export all.ics --data data
expect_code "export" 0
run import all.ics --data copy
expect_is "an export can be imported" "$out" "4 imported, 0 updated, 0 skipped"
run export again.ics --data copy
expect_is "a round trip changes nothing" "$(checksum again.ics)" "$(checksum all.ics)"
run export - --from 2026-11-07 --to 2026-11-07 --data data
expect_is "an export of one day" "$(grep '^UID:' out.txt | tr -d '\r')" "UID:fair@test"

# ---- bad input
echo "this is a shopping list" >rubbish.ics
printf 'BEGIN:VCARD\nVERSION:3.0\nUID:ann\nFN:Ann\nTEL:1\nEND:VCARD\n' >ann.vcf
run import ann.vcf --data data
expect_is "a contact comes in" "$out" "1 imported, 0 updated, 0 skipped"
run export ANN.VCF --data data
expect_is "and goes out" "$(tr -d '\r' <ANN.VCF)" "$(cat ann.vcf)"
run export all.vcf --from 2026-01-01 --data data
expect_code "contacts have no days" 2
run import rubbish.ics --data data
expect_code "no calendar" 1
expect_is "no calendar: one line" "$err" "rubbish.ics:1: no calendar and no contact in this file"
fails "a missing file" "absent.ics" import absent.ics --data data
sed '/^SUMMARY:Standup/q' first.ics >cut.ics
run import cut.ics --data cut
expect_code "a file that is cut off" 0
expect_is "what is whole comes in" "$out" "1 imported, 0 updated, 1 skipped"
expect_has "the cut is named" "$err" "cut off by the end of the file"
run import first.ics absent.ics --data all_or_nothing
expect_code "one missing file among several" 1
expect_is "one missing file keeps the others out" "$(count all_or_nothing)" 0
head -c 3000000 /dev/urandom >noise.ics
before=$(checksum data/calendar.db)
run import noise.ics --data data
expect_code "noise" 1
expect_is "rubbish leaves the store alone" "$(checksum data/calendar.db)" "$before"

# ---- folders and stores that are not as they should be
fails "a data folder that cannot be" "rubbish.ics/below" agenda --data rubbish.ics/below
fails "an export that cannot be written" "rubbish.ics/x.ics" export rubbish.ics/x.ics --data data

for words in "export data/calendar.db" "render month data/calendar.db" "import data/backups"; do
  # shellcheck disable=SC2086
  fails "own file: $words" "own files" $words --data data
done
expect_is "the calendar is untouched" "$(checksum data/calendar.db)" "$before"
for words in "export -" "agenda" "--help"; do
  # shellcheck disable=SC2086
  timeout $patience "$program" $words --data data >/dev/full 2>err.txt
  expect_is "a full device: $words" "$?" 1
  expect_has "a full device: $words" "$(cat err.txt)" "standard output cannot be written: the disk is full"
  # shellcheck disable=SC2086
  timeout $patience "$program" $words --data data >&- 2>err.txt
  expect_is "no standard output: $words" "$?" 1
done
{ sleep 0.3; timeout $patience "$program" export - --data data 2>err.txt; echo $? >code.txt; } | true
expect_is "a pipe that nobody reads" "$(cat code.txt)" 1
expect_has "a pipe that nobody reads" "$(cat err.txt)" "nobody reads it"
timeout $patience "$program" import first.ics --data full_device >/dev/full 2>err.txt
expect_has "an import whose counts cannot be shown is told" "$(cat err.txt)" "import is made: 4 imported"
expect_is "an import whose counts cannot be shown is made" "$(count full_device)" "$(count data)"
mkfifo pipe.ics
fails "a pipe in the place of a file" "pipe" import pipe.ics --data data
for file in calendar.db device.db registry icons.bmp; do
  mkdir "pipe_$file" && mkfifo "pipe_$file/$file"
  run agenda --data "pipe_$file"
  if [ "$code" -le 1 ]; then good; else bad "a pipe as $file" "ended with $code"; fi
done
escape=$(printf '\033')
run import "$escape]0;x.ics" --data data
case "$err" in *"$escape"*) bad "a file's name reaches the terminal" ;; *) good ;; esac
if [ $sanitized = no ]; then
  (ulimit -v 150000; run export x.ics --data data
   case $code in 0|1|127) exit 0 ;; esac; exit 1)
  if [ $? -eq 0 ]; then good; else bad "little memory ends in abort"; fi
fi

mkdir foreign
cp noise.ics foreign/calendar.db
before=$(checksum foreign/calendar.db)
for words in "agenda" "search fair" "import first.ics" "export x.ics" "render month x.png"; do
  # shellcheck disable=SC2086
  fails "a store that is no store: $words" "foreign/calendar.db" $words --data foreign
done
expect_is "a store that is no store: untouched" "$(checksum foreign/calendar.db)" "$before"

# ---- the way back
# damage FILE : overwrites the first page.
damage() { head -c 4096 noise.ics | dd of="$1" conv=notrunc status=none; }
cp -r data lost
run backup --data lost --now 2026-11-10T08:00
expect_code "backup" 0
expect_is "a copy is its owner's alone" "$(stat -c %a lost/backups/calendar-2026-11-10.db)" 600
calendar newer.ics <<'END'
BEGIN:VEVENT
UID:newer@test
DTSTART:20261111T100000
SUMMARY:Newer than the copy
END:VEVENT
END
run import newer.ics --data lost --now 2026-11-10T09:00
run restore --list --data lost
expect_has "copies are listed" "$out" "2026-11-10  4 appointments"
damage lost/calendar.db
fails "a damaged calendar" "orvello restore" agenda --data lost
run restore 2026-11-09 --data lost
expect_code "no copy of that day" 1
before=$(checksum lost/calendar.db)
run restore --data lost --now 2026-11-11T08:00
expect_code "restore" 0
expect_is "the copy is the calendar" "$(count lost)" "$(count data)"
expect_is "the damaged file is kept" "$(checksum lost/calendar-replaced-2026-11-11.db)" "$before"
run import lost/calendar-saved-2026-11-11.ics --data lost
expect_has "what could be read is saved" "$out" "1 imported, 4 updated"
expect_is "so are contacts" "$(tr -d '\r' <lost/calendar-saved-2026-11-11.vcf)" "$(cat ann.vcf)"
rm lost/calendar.db
fails "a calendar that is gone, and has copies" "is missing" agenda --data lost
cp -r data lone && rm -rf lone/backups && damage lone/calendar.db
run restore --data lone
expect_is "without a copy it is made anew of what can be read" "$(count lone)" "$(count data)"
run export lone.vcf --data lone
expect_is "with its contacts" "$(tr -d '\r' <lone.vcf)" "$(cat ann.vcf)"
flock -s lone/calendar.lock sleep 2 &
run restore --data lone
expect_code "a calendar in use is not restored" 1
wait

# ---- interrupted, and two at once
{
  printf 'BEGIN:VCALENDAR\r\nVERSION:2.0\r\n'
  awk 'BEGIN { for (i = 0; i < 30000; ++i)
    printf "BEGIN:VEVENT\r\nUID:many%d@test\r\nDTSTART:20%02d%02d%02dT%02d0000\r\nSUMMARY:Many %d\r\nEND:VEVENT\r\n",
           i, i % 30 + 5, i % 12 + 1, i % 28 + 1, i % 24, i }'
  printf 'END:VCALENDAR\r\n'
} >many.ics
run import first.ics --data interrupted
before=$(count interrupted)
started=$(date +%s%N)
run import many.ics --data whole
whole=$(count whole)
span=$((($(date +%s%N) - started) / 1000000))
expect_is "many come in" "$whole" 30000
kills=0
for part in 10 30 50 70 80 90; do
  "$program" import many.ics --data interrupted >/dev/null 2>&1 &
  child=$!
  sleep "$(awk -v ms=$span -v part=$part 'BEGIN { printf "%.3f", ms * part / 100000 }')"
  kill -9 $child 2>/dev/null && kills=$((kills + 1))
  wait $child 2>/dev/null
  after=$(count interrupted)
  if [ "$after" = "$before" ]; then good
  elif [ "$after" = $((before + whole)) ]; then good; break
  else bad "an import killed at $part% is before or after" "$after occurrences"; fi
done
if [ $kills -gt 0 ]; then good; else bad "no import was caught in the middle"; fi
run import first.ics --data interrupted
expect_is "the store goes on after kills" "$out" "0 imported, 4 updated, 0 skipped"

sed 's/many/left/' many.ics >left.ics
"$program" import many.ics --data both >both1.txt 2>&1 &
one=$!
"$program" import left.ics --data both >both2.txt 2>&1 &
two=$!
wait $one; codes=$?
wait $two; codes=$codes$?
expect_is "two imports at once" "$codes" 00
expect_is "two imports at once lose nothing" "$(count both)" 60000

# ---- pictures and windows
# png_size FILE : "WxH" of a PNG.
png_size() {
  [ "$(head -c 8 "$1" | od -An -tx1 | tr -d ' \n')" = 89504e470d0a1a0a ] || { echo "no PNG"; return; }
  # shellcheck disable=SC2046
  set -- $(od -An -tu1 -j16 -N8 "$1")
  echo "$(($3 * 256 + $4))x$(($7 * 256 + $8))"
}
for size in "240x320 96" "640x480 192"; do
  run render month month.png --data data --screen "${size% *}" --dpi "${size#* }" --date 2026-11-06
  expect_code "render $size" 0
  expect_is "render $size" "$(png_size month.png)" "${size% *}"
done
run render month first.png --data data --date 2026-11-06 --now 2026-11-06T10:00
run render month second.png --data data --date 2026-11-06 --now 2026-11-06T10:00
expect_is "a picture can be repeated" "$(checksum second.png)" "$(checksum first.png)"
run render month second.png --data data --date 2026-12-06 --now 2026-11-06T10:00
if [ "$(checksum second.png)" != "$(checksum first.png)" ]; then good; else
  bad "another month looks the same"; fi
# ---- settings
settings=(--data data)
run settings list "${settings[@]}"
expect_code "settings list" 0
expect_has "settings list: what a setting means" "$out" "first view: 0 Day, 1 Month, 2 Year"
expect_has "a new calendar's appointments have a length, also after the settings' OK" \
  "$(cat data/registry)" "defaultEndTimeIndex=dword:00000019"
run settings set itemcolor7 '#123456' "${settings[@]}"
run settings get itemcolor7 "${settings[@]}"
expect_is "a setting is kept" "$out" '#123456'
run settings export own.txt "${settings[@]}"
expect_code "settings export" 0
expect_is "settings are private" "$(stat -c %a own.txt)" 600
run settings export - "${settings[@]}"
expect_is "settings to standard output" "$out" "$(cat own.txt)"
sed 's/^startmode = .*/startmode = 0/' own.txt >edited.txt
run settings import edited.txt --data moved
expect_code "settings import" 0
run settings export - --data moved
expect_is "settings come over" "$(printf '%s\n' "$out" | grep -v '^startmode')" \
  "$(grep -v '^startmode' own.txt)"
run settings get startmode --data moved
expect_is "with what was edited" "$out" 0
"$program" settings import - --data moved <own.txt >out.txt 2>err.txt
expect_is "settings from standard input" "$("$program" settings get startmode --data moved)" 1
before=$(cat moved/registry moved/settings.vol | cksum)
printf '[settings]\nstartmode = 2\n[profile "Work"]\n"a"\nshowday = 1\n' >bad.txt
fails "a bad settings file" "bad.txt:5: a text stands between" settings import bad.txt --data moved
expect_is "a bad settings file changes nothing" "$(cat moved/registry moved/settings.vol | cksum)" "$before"
fails "a settings file that is none" "cannot be read" settings import nothing.txt --data moved
fails "settings into an own file" "own files" settings export moved/registry --data moved
mkdir -p stuck/registry
fails "a registry that cannot be written" "stuck/registry" settings set startmode 2 --data stuck

for view in day year; do
  run render $view $view.png --data data --now 2026-11-06T10:00
  expect_code "render $view" 0
done
fails "a picture that cannot be written" "rubbish.ics/x.png" render month rubbish.ics/x.png --data data

run --measure start --data data
expect_code "measure start" 0
if printf %s "$out" | grep -qE '^first paint: [0-9]+ ms$'; then good; else bad "measure start" "$out"; fi
run --measure turn --data data
expect_code "measure turn" 0
if printf %s "$out" | grep -qE '^turn: median [0-9.]+ ms, maximum [0-9.]+ ms$'; then good; else bad "measure turn" "$out"; fi
QT_QPA_PLATFORM='' DISPLAY='' WAYLAND_DISPLAY='' run --data data --now 2026-11-06T10:00 --language en
expect_code "no display" 0
expect_has "no display: says so" "$err" "no display"
expect_has "no display: the agenda" "$out" "Fair"
expect_is "no display: the start view" "$(png_size orvello.png)" 480x640

run agenda
expect_code "without --data" 0
if [ -f home/.local/share/orvello/calendar.db ]; then good; else
  bad "without --data the calendar is in the home folder"; fi

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
