#include "calendar/typed_time.h"

#include <algorithm>

#include "calendar/time_slots.h"

namespace orvello {
namespace {

enum class HalfDay { unsaid, morning, afternoon };

bool is_digit_unit(char16_t c) { return c >= u'0' && c <= u'9'; }

// Also those that do not break a line, which some locales write before the half of the day.
bool is_blank_unit(char16_t c) {
  return c == u' ' || c == u'\t' || c == u'\u00A0' || c == u'\u2009' || c == u'\u202F';
}

TextView without_blanks(TextView text) {
  while (!text.empty() && is_blank_unit(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_blank_unit(text.back())) text.remove_suffix(1);
  return text;
}

TextView take_digits(TextView& text) {
  const auto end = std::find_if_not(text.begin(), text.end(), is_digit_unit);
  const TextView digits = text.substr(0, static_cast<std::size_t>(end - text.begin()));
  text.remove_prefix(digits.size());
  return digits;
}

// Small letters, Latin and Cyrillic, as capitals; without dots and blanks: "p.m." is "PM".
Text plain_letters(TextView text) {
  Text letters;
  for (const char16_t c : text) {
    if (c == u'.' || is_blank_unit(c)) continue;
    const bool latin = c >= u'a' && c <= u'z', cyrillic = c >= u'\u0430' && c <= u'\u044F';
    letters += latin || cyrillic ? static_cast<char16_t>(c - 32) : c;
  }
  return letters;
}

std::optional<HalfDay> half_of(TextView said, const LocaleData& locale) {
  const Text letters = plain_letters(said);
  if (letters.empty()) return HalfDay::unsaid;
  const auto means = [&](const Text& designator) {
    const Text whole = plain_letters(designator);
    // The lists of times cut a long one.
    return !whole.empty() && letters.size() >= std::min<std::size_t>(whole.size(), 7) &&
           starts_with(whole, letters);
  };
  if (letters == u"A" || letters == u"AM" || means(locale.morning)) return HalfDay::morning;
  if (letters == u"P" || letters == u"PM" || means(locale.afternoon)) return HalfDay::afternoon;
  return std::nullopt;
}

// Takes what stands between hour and minute: a mark with blanks around it, or blanks alone.
bool take_separator(TextView& text, const LocaleData& locale) {
  const TextView before = text;
  text = without_blanks(text);
  const bool blank = text.size() < before.size();
  const TextView local = without_blanks(locale.time_separator);
  if (!local.empty() && starts_with(text, local))
    text.remove_prefix(local.size());
  else if (!text.empty() && TextView(u":.,hH\u0447\u0427-").find(text[0]) != TextView::npos)
    text.remove_prefix(1);
  else
    return blank && !text.empty() && is_digit_unit(text[0]);
  text = without_blanks(text);
  return true;
}

int typed_number(TextView digits) { return static_cast<int>(leading_number(digits)); }

std::optional<CalendarDate> time_of(int hour, int minute, HalfDay half) {
  if (minute > 59 || hour > 23) return std::nullopt;
  if (half == HalfDay::morning && hour > 12) return std::nullopt;
  if (half == HalfDay::morning && hour == 12) hour = 0;
  if (half == HalfDay::afternoon && hour == 0) return std::nullopt;
  if (half == HalfDay::afternoon && hour < 12) hour += 12;
  return time_at({hour, minute});
}

}  // namespace

std::optional<CalendarDate> typed_time(TextView typed, const LocaleData& locale) {
  TextView text = without_blanks(typed);
  TextView hour = take_digits(text), minute;
  if (hour.empty() || hour.size() > 4) return std::nullopt;
  TextView rest = text;
  if (hour.size() > 2) {  // 930 and 0930
    minute = hour.substr(hour.size() - 2);
    hour.remove_suffix(2);
  } else if (take_separator(rest, locale)) {
    const TextView found = take_digits(rest);
    // "9h" and "9 p.m." are whole hours, "9:5" is nothing in particular.
    const bool hours_alone =
        found.empty() &&
        TextView(u"hH\u0447\u0427").find(without_blanks(text)[0]) != TextView::npos;
    if (found.size() == 2)
      minute = found;
    else if (!hours_alone)
      return std::nullopt;
    text = rest;
    if (starts_with(text, u":00")) text.remove_prefix(3);
  }
  const auto half = half_of(without_blanks(text), locale);
  if (!half) return std::nullopt;
  return time_of(typed_number(hour), typed_number(minute), *half);
}

}  // namespace orvello
