#!/usr/bin/env bash
# Seeds faults into two small languages and expects check_texts.py to name each, and nothing else.
set -u
tools=$(cd "$(dirname "$0")" && pwd)
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
passed=0 failed=0
mkdir -p "$tree/resources/languages" "$tree/app"

head_of_ru='LANGUAGE(russian, u"ru", u"Русский", left_to_right, east_slavic)'
# expect FAULT|ok WHAT LINE... : the lines take the place of Russian's, by their ids.
expect() {
  local want=$1 what=$2 output
  shift 2
  cat >"$tree/resources/languages/english.inc" <<'END'
// Texts.
LANGUAGE(english, u"en", u"English", left_to_right, one_or_many)
TEXT(ok, u"OK")
TEXT(asked, u"\n\n%s on %d?")
TEXT(name, u"Name:")
TEXT(days, u"Su|Mo")
TEXT(of_endings, u"th|st")
FORMS(days_left, u"once|%d days")
END
  printf '%s\n' "${@/#HEAD/$head_of_ru}" >"$tree/resources/languages/russian.inc"
  echo 'use(StringId::ok, StringId::asked, StringId::name, StringId::days, StringId::of_endings,' \
    'StringId::days_left);' >"$tree/app/a.cpp"
  [ "$what" != 'an unused text' ] || echo 'int x;' >"$tree/app/a.cpp"
  output=$("$tools/check_texts.py" "$tree")
  local got=fault
  [ -n "$output" ] || got=ok
  if { [ "$want" = ok ] && [ $got = ok ]; } || { [ "$want" != ok ] && [[ $output == *"$want"* ]]; }; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "check_texts: $what: wanted $want, got: $output"
  fi
}

ok='TEXT(ok, u"ОК")' asked='TEXT(asked, u"\n\n%s в %d?")' name='TEXT(name, u"Имя:")'
days='TEXT(days, u"Вс|Пн")' endings='TEXT(of_endings, u"-й")'
left='FORMS(days_left, u"%d день|%d дня|%d дней")'
expect ok 'two languages' HEAD "$ok" "$asked" "$name" "$days" "$endings" "$left"
expect 'asked is missing: resources/languages/english.inc:4' 'a missing text' \
  HEAD "$ok" "$name" "$days" "$endings" "$left"
expect 'more is no text of English' 'one too many' \
  HEAD "$ok" "$asked" "$name" "$days" "$endings" "$left" 'TEXT(more, u"x")'
expect 'ok stands in line 2 too' 'a text twice' \
  HEAD "$ok" "$ok" "$asked" "$name" "$days" "$endings" "$left"
expect 'russian.inc:3: asked takes other arguments' 'an argument too few' \
  HEAD "$ok" 'TEXT(asked, u"\n\n%s?")' "$name" "$days" "$endings" "$left"
expect 'asked takes other arguments' 'arguments the other way round' \
  HEAD "$ok" 'TEXT(asked, u"\n\n%d %s?")' "$name" "$days" "$endings" "$left"
expect 'asked begins or ends otherwise' 'a line end too few' \
  HEAD "$ok" 'TEXT(asked, u"\n%s в %d?")' "$name" "$days" "$endings" "$left"
expect 'name begins or ends otherwise' 'a colon too few' \
  HEAD "$ok" "$asked" 'TEXT(name, u"Имя")' "$days" "$endings" "$left"
expect 'days has 2 words in English' 'a word too many' \
  HEAD "$ok" "$asked" "$name" 'TEXT(days, u"Вс|Пн|Вт")' "$endings" "$left"
expect 'days is a list in English' 'a list that is none' \
  HEAD "$ok" "$asked" "$name" 'TEXT(days, u"Вс")' "$endings" "$left"
expect 'days_left has not 3 forms' 'a form too few' \
  HEAD "$ok" "$asked" "$name" "$days" "$endings" 'FORMS(days_left, u"%d день|%d дня")'
expect 'days_left is FORMS in English' 'forms as a list' \
  HEAD "$ok" "$asked" "$name" "$days" "$endings" 'TEXT(days_left, u"%d дней|%d дня")'
expect 'ok is empty' 'an empty text' \
  HEAD 'TEXT(ok, u"")' "$asked" "$name" "$days" "$endings" "$left"
expect 'neither LANGUAGE(...) nor one text' 'two texts on a line' \
  HEAD "$ok $asked" "$name" "$days" "$endings" "$left"
expect 'no LANGUAGE(name' 'a language without a name' \
  "$ok" "$asked" "$name" "$days" "$endings" "$left"
expect 'no family of plurals: some' 'unknown plurals' \
  'LANGUAGE(russian, u"ru", u"Русский", left_to_right, some)' \
  "$ok" "$asked" "$name" "$days" "$endings" "$left"
expect 'ok is used nowhere' 'an unused text' HEAD "$ok" "$asked" "$name" "$days" "$endings" "$left"
echo "check_texts: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
