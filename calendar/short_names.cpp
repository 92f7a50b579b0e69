#include "calendar/short_names.h"

#include <algorithm>

namespace orvello {
namespace {

constexpr std::size_t kCutNameLetters = 3;  // letters of a cut name

template <typename Names>
bool differ(const Names& names) {
  for (auto name = names.begin(); name != names.end(); ++name)
    if (name->empty() || std::find(std::next(name), names.end(), *name) != names.end())
      return false;
  return true;
}

template <typename Names>
Names cut_to(Names names, std::size_t letters) {
  for (Text& name : names) name = cut(name, letters);
  return names;
}

template <typename Names>
Names within_buffer(const Names& names) {
  constexpr std::size_t kBufferedName = 19;  // and a terminator
  const Names buffered = cut_to(names, kBufferedName);
  return differ(buffered) ? buffered : names;
}

std::size_t common_length(const Text& a, const Text& b) {
  const auto [end, other] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
  return static_cast<std::size_t>(end - a.begin());
}

// Without what it shares with all that begin alike: a word goes as a whole, of a part of one the
// first letter stays.
template <typename Names>
Text own_letters(const Text& name, const Names& names) {
  std::size_t shared = name.size();
  bool alone = true;
  for (const Text& other : names) {
    if (&other == &name || cut(other, kCutNameLetters) != cut(name, kCutNameLetters)) continue;
    shared = std::min(shared, common_length(name, other));
    alone = false;
  }
  if (alone || shared == name.size()) return name;
  const bool word = name[shared - 1] == u' ';
  return (word ? Text() : Text(cut(name, 1))) + name.substr(shared);
}

// As few letters of each as it takes; of names that are alike their numbers.
template <typename Names>
Names told_apart(const Names& names) {
  constexpr std::size_t kMost = 8;
  Names own;
  for (std::size_t i = 0; i < names.size(); ++i) own[i] = own_letters(names[i], names);
  for (std::size_t letters = kCutNameLetters; letters <= kMost; ++letters)
    if (const Names short_ones = cut_to(own, letters); differ(short_ones)) return short_ones;
  for (std::size_t i = 0; i < own.size(); ++i) own[i] = format(u"%d", static_cast<int>(i) + 1);
  return own;
}

void add_if_differing(std::vector<WeekNames>& choices, const WeekNames& names) {
  if (differ(names)) choices.push_back(names);
}

// From Monday first to the first day of the week.
WeekNames by_column(WeekNames names, int firstdayofweek) {
  if (firstdayofweek == 0) std::rotate(names.begin(), names.end() - 1, names.end());
  return names;
}

// What can stand in place of cut names that are alike.
void add_abbreviations(std::vector<WeekNames>& choices, const LocaleData& locale) {
  add_if_differing(choices, locale.short_day_names);
  add_if_differing(choices, locale.narrow_day_names);
  choices.push_back(told_apart(locale.day_names));
}

}  // namespace

WeekNames full_day_names(const LocaleData& locale) { return within_buffer(locale.day_names); }

YearNames full_month_names(const LocaleData& locale) { return within_buffer(locale.month_names); }

std::vector<WeekNames> abbreviated_day_names(const LocaleData& locale) {
  std::vector<WeekNames> choices;
  add_abbreviations(choices, locale);
  return choices;
}

std::vector<WeekNames> short_day_names(int firstdayofweek, const LocaleData& locale) {
  std::vector<WeekNames> choices;
  add_if_differing(choices, cut_to(locale.day_names, kCutNameLetters));
  if (choices.empty()) add_abbreviations(choices, locale);
  for (WeekNames& names : choices) names = by_column(names, firstdayofweek);
  return choices;
}

WeekNames day_letters(int firstdayofweek, const LocaleData& locale) {
  WeekNames names = locale.narrow_day_names;
  if (std::any_of(names.begin(), names.end(), [](const Text& name) { return name.empty(); }))
    names = cut_to(locale.day_names, 1);
  return by_column(names, firstdayofweek);
}

std::vector<YearNames> short_month_names(const LocaleData& locale) {
  std::vector<YearNames> choices;
  if (differ(locale.short_month_names)) choices.push_back(locale.short_month_names);
  for (const YearNames& names :
       {cut_to(locale.short_month_names, kCutNameLetters),
        cut_to(locale.month_names, kCutNameLetters), told_apart(locale.month_names)})
    if (differ(names)) choices.push_back(names);
  YearNames numbers;
  for (std::size_t i = 0; i < numbers.size(); ++i)
    numbers[i] = format(u"%d", static_cast<int>(i) + 1);
  choices.push_back(numbers);
  return choices;
}

}  // namespace orvello
