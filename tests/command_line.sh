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

good() { passed=$((passed + 1)); }
bad() {  # bad WHAT [DETAIL]
  failed=$((failed + 1))
  echo "FAILED: $1${2:+: $(printf %s "$2" | tr '\n' '|' | head -c 400)}"
}
# run ARGUMENT... : fills $out, $err and $code.
run() {
  timeout 20 "$program" "$@" >out.txt 2>err.txt
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
for words in "--no-such-option" "import" "render month" "agenda yesterday" "--now 25:00" \
  "--language fr" "export a.ics --from 2026-02-30"; do
  # shellcheck disable=SC2086
  run $words --data "$folder/unused"
  expect_code "wrong usage: $words" 2
  expect_has "wrong usage points at the help: $words" "$err" "--help"
done
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
run agenda 2026-11-09 --data data --language en
expect_has "agenda in English" "$out" "Monday, November 9, 2026"
expect_has "a changed occurrence stands at its new time" "$out" "Standup moved"
run agenda 2026-11-09 --data data --language ru
expect_is "UTC is shown in the local zone" "$out" 'понедельник, 9 ноября 2026
  11:30-12:00      Standup moved
  18:00-18:30      Call'
run agenda 2026-11-10 --data data
expect_is "an empty day says so" "$out" "No Appointments"
run agenda 2026-11-10 --data data --json
expect_is "an empty day is an empty array" "$out" "[]"
run agenda 2026-11-06 2026-11-09 --json --data data
expect_code "agenda as JSON" 0
expect_is "agenda as JSON" "$(sed 's/"oid": [0-9]*/"oid": N/' out.txt)" '[
  {"oid": N, "start": "2026-11-06", "end": "2026-11-08", "allDay": true, "subject": "Fair", "location": "", "categories": [], "recurring": false, "busyStatus": "free", "private": false, "reminderMinutes": null},
  {"oid": N, "start": "2026-11-06T13:00:00", "end": "2026-11-06T14:00:00", "allDay": false, "subject": "Обед, \"late\"", "location": "Cafe", "categories": ["Home", "Big plans"], "recurring": false, "busyStatus": "busy", "private": true, "reminderMinutes": 10},
  {"oid": N, "start": "2026-11-09T11:30:00", "end": "2026-11-09T12:00:00", "allDay": false, "subject": "Standup moved", "location": "", "categories": [], "recurring": true, "busyStatus": "busy", "private": false, "reminderMinutes": null},
  {"oid": N, "start": "2026-11-09T18:00:00", "end": "2026-11-09T18:30:00", "allDay": false, "subject": "Call", "location": "", "categories": [], "recurring": false, "busyStatus": "busy", "private": false, "reminderMinutes": null}
]'
TZ=America/New_York run agenda 2026-11-06 --json --data data
expect_has "an all-day item does not drift with the zone" "$out" '"start": "2026-11-06", "end": "2026-11-08"'

run export all.ics --data data
expect_code "export" 0
for line in "UID:lunch@test" "X-COLOUR-OF-SOUP:green" "RRULE:FREQ=WEEKLY;BYDAY=MO,WE,FR" \
  "EXDATE:20261106T090000" "RECURRENCE-ID:20261109T090000" "DTEND;VALUE=DATE:20261108" \
  "DTSTART:20261109T170000Z" "TRIGGER:-PT10M"; do
  expect_has "export keeps $line" "$(tr -d '\r' <all.ics)" "$line"
done
run import all.ics --data copy
expect_is "an export can be imported" "$out" "4 imported, 0 updated, 0 skipped"
run agenda 2026-01-01 2027-12-31 --json --data data
before=$(sed 's/"oid": [0-9]*//' out.txt)
run agenda 2026-01-01 2027-12-31 --json --data copy
expect_is "a round trip shows the same occurrences" "$(sed 's/"oid": [0-9]*//' out.txt | cksum)" \
  "$(printf '%s\n' "$before" | cksum)"
run export again.ics --data copy
expect_is "a second round trip changes nothing" "$(checksum again.ics)" "$(checksum all.ics)"
run export - --from 2026-11-07 --to 2026-11-07 --data data
expect_is "an export of one day holds what touches it" "$(grep -c '^UID:' out.txt)" 1
expect_has "an export of one day holds what touches it" "$out" "UID:fair@test"

# ---- bad input
echo "this is a shopping list" >rubbish.ics
run import rubbish.ics --data data
expect_code "no calendar" 1
expect_is "no calendar: one line" "$err" "rubbish.ics:1: no calendar in this file"
: >empty.ics
run import empty.ics --data data
expect_code "an empty file" 1
expect_has "an empty file is named" "$err" "empty.ics:"
run import absent.ics --data data
expect_code "a missing file" 1
expect_has "a missing file is named" "$err" "absent.ics"
calendar broken.ics <<'END'
BEGIN:VEVENT
UID:good1@broken
DTSTART:20261201T100000
SUMMARY:Good one
END:VEVENT
BEGIN:VEVENT
UID:nodate@broken
DTSTART:20260231T100000
SUMMARY:No such day
END:VEVENT
BEGIN:VEVENT
UID:backwards@broken
DTSTART:20261202T100000
DTEND:20261202T090000
SUMMARY:Ends first
END:VEVENT
BEGIN:VEVENT
UID:nostart@broken
SUMMARY:Never starts
END:VEVENT
BEGIN:VEVENT
UID:endless@broken
DTSTART:20261201T120000
RRULE:FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30
SUMMARY:Only its start
END:VEVENT
BEGIN:VEVENT
UID:good2@broken
DTSTART:20261201T110000
SUMMARY:Good two
END:VEVENT
END
run import broken.ics --data broken
expect_code "broken events among good ones" 0
expect_is "broken events are skipped" "$out" "4 imported, 0 updated, 2 skipped"
for problem in "broken.ics:11: start \"20260231T100000\" is no date" \
  "broken.ics:17: end lies before the start" "broken.ics:20: event without a start" \
  "broken.ics:27: rule names no day"; do
  expect_has "a problem has its file and line" "$err" "$problem"
done
expect_is "one line a problem" "$(wc -l <err.txt)" 4
expect_is "the good ones are there" "$(count broken)" 4
sed '/^SUMMARY:Standup/q' first.ics >cut.ics
run import cut.ics --data cut
expect_code "a file that is cut off" 0
expect_is "what is whole comes in" "$out" "1 imported, 0 updated, 1 skipped"
expect_has "the cut is named" "$err" "cut off by the end of the file"
run import broken.ics absent.ics --data all_or_nothing
expect_code "one missing file among several" 1
expect_is "one missing file keeps the others out" "$(count all_or_nothing)" 0
head -c 20000000 /dev/urandom >noise.ics
before=$(checksum data/calendar.db)
run import noise.ics --data data
expect_code "20 MB of noise" 1
if [ "$(wc -l <err.txt)" -le 200 ]; then good; else bad "noise floods the terminal"; fi
tr '\0-\377' 'A' </dev/zero | head -c 20000000 >one_line.ics
run import one_line.ics --data data
expect_code "20 MB in one line" 1
expect_is "rubbish leaves the store alone" "$(checksum data/calendar.db)" "$before"

# ---- folders and stores that are not as they should be
run agenda --data rubbish.ics/below
expect_code "a data folder that cannot be" 1
expect_has "a data folder that cannot be is named" "$err" "rubbish.ics/below"
if [ "$(id -u)" -ne 0 ]; then
  mkdir locked && chmod 500 locked
  run agenda --data locked
  expect_code "a data folder that is not ours to write" 1
  expect_has "a data folder that is not ours to write is named" "$err" "locked"
fi
run export rubbish.ics/x.ics --data data
expect_code "an export that cannot be written" 1
expect_has "an export that cannot be written is named" "$err" "rubbish.ics/x.ics"

for target in calendar.db calendar.db-journal ./settings.vol backups; do
  for words in "export data/$target" "render month data/$target" "import data/$target"; do
    # shellcheck disable=SC2086
    run $words --data data
    expect_code "own file: $words" 1
    expect_has "own file: $words" "$err" "own files"
  done
done
ln data/calendar.db hard.ics
run export hard.ics --data data
expect_has "an own file under another name" "$err" "own files"
rm hard.ics
expect_is "the calendar is untouched" "$(checksum data/calendar.db)" "$before"
for words in "export -" "agenda" "--help"; do
  # shellcheck disable=SC2086
  timeout 20 "$program" $words --data data >/dev/full 2>err.txt
  expect_is "a full device: $words" "$?" 1
  expect_has "a full device: $words" "$(cat err.txt)" "standard output cannot be written: the disk is full"
  # shellcheck disable=SC2086
  timeout 20 "$program" $words --data data >&- 2>err.txt
  expect_is "no standard output: $words" "$?" 1
done
{ sleep 0.3; timeout 20 "$program" export - --data data 2>err.txt; echo $? >code.txt; } | true
expect_is "a pipe that nobody reads" "$(cat code.txt)" 1
expect_has "a pipe that nobody reads" "$(cat err.txt)" "nobody reads it"
timeout 20 "$program" import first.ics --data full_device >/dev/full 2>err.txt
expect_has "an import whose counts cannot be shown is told" "$(cat err.txt)" "import is made: 4 imported"
expect_is "an import whose counts cannot be shown is made" "$(count full_device)" "$(count data)"
mkfifo pipe.ics
run import pipe.ics --data data
expect_code "a pipe in the place of a file" 1
expect_has "a pipe in the place of a file" "$err" "pipe"
for file in calendar.db device.db registry icons.bmp; do
  mkdir "pipe_$file" && mkfifo "pipe_$file/$file"
  run agenda --data "pipe_$file"
  if [ "$code" -le 1 ]; then good; else bad "a pipe as $file" "ended with $code"; fi
done
escape=$(printf '\033')
run import "$escape]0;x.ics" --data data
case "$err" in *"$escape"*) bad "a file's name reaches the terminal" ;; *) good ;; esac
(ulimit -v 150000; run export x.ics --data data
 case $code in 0|1|127) exit 0 ;; esac; exit 1)
if [ $? -eq 0 ]; then good; else bad "little memory ends in abort"; fi

# refused DATA WHAT : every command names the file and leaves it as it is.
refused() {
  local before words
  before=$(checksum "$1/calendar.db")
  for words in "agenda" "import first.ics" "export x.ics" "render month x.png"; do
    # shellcheck disable=SC2086
    run $words --data "$1"
    expect_code "$2: $words" 1
    expect_has "$2: $words names the file" "$err" "$1/calendar.db"
  done
  expect_is "$2: untouched" "$(checksum "$1/calendar.db")" "$before"
}
mkdir foreign newer halved holed
cp noise.ics foreign/calendar.db
refused foreign "a store that is no store"
cp data/calendar.db newer/calendar.db
# The format's number: four bytes, high byte first, at 60.
printf '\0\0\3\350' | dd of=newer/calendar.db bs=1 seek=60 conv=notrunc status=none
refused newer "a store of a newer format"
expect_has "a newer format is called that" "$err" "newer"
head -c $(($(stat -c %s data/calendar.db) / 2)) data/calendar.db >halved/calendar.db
refused halved "a store cut in half"

# ---- the way back
# damage FILE PAGE... : overwrites pages, counted from 1.
damage() {
  local file=$1 page
  shift
  for page; do
    head -c 4096 noise.ics | dd of="$file" bs=4096 seek=$((page - 1)) conv=notrunc status=none
  done
}
cp -r data lost
run backup --data lost --now 2026-11-10T08:00
expect_code "backup" 0
expect_is "a copy is its owner's alone" "$(stat -c %a lost/backups/calendar-2026-11-10.db)" 600
run backup --data lost --now 2026-11-11T08:00
expect_has "nothing changed, nothing is copied" "$out" "no copy is due"
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
damage lost/calendar.db 1
run agenda --data lost
expect_code "a damaged calendar" 1
expect_has "a damaged calendar points to the way back" "$err" "orvello restore"
QT_QPA_PLATFORM=offscreen run restore 2026-11-09 --data lost
expect_code "no copy of that day" 1
before=$(checksum lost/calendar.db)
run restore --data lost --now 2026-11-11T08:00
expect_code "restore" 0
expect_is "the copy is the calendar" "$(count lost)" "$(count data)"
expect_is "the damaged file is kept" "$(checksum lost/calendar-replaced-2026-11-11.db)" "$before"
run import lost/calendar-saved-2026-11-11.ics --data lost
expect_has "what could be read is saved" "$out" "1 imported, 4 updated"
rm lost/calendar.db
run agenda --data lost
expect_code "a calendar that is gone, and has copies" 1
expect_has "a calendar that is gone, and has copies" "$err" "is missing"
cp -r data lone && damage lone/calendar.db 1
run restore --data lone
expect_is "without a copy it is made anew of what can be read" "$(count lone)" "$(count data)"
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
for size in "240x320 96" "480x640 192" "640x480 192"; do
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
for view in day year; do
  run render $view $view.png --data data --now 2026-11-06T10:00
  expect_code "render $view" 0
done
run render month rubbish.ics/x.png --data data
expect_code "a picture that cannot be written" 1
expect_has "a picture that cannot be written is named" "$err" "rubbish.ics/x.png"

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
