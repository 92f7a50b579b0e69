#include "exchange/vcalendar1.h"

#include <algorithm>
#include <vector>

#include "calendar/rule_text.h"
#include "exchange/charset.h"
#include "exchange/content_line.h"
#include "exchange/date_values.h"
#include "exchange/quoted_printable.h"
#include "exchange/zone_names.h"

namespace orvello {
namespace {

// "T240000" is the next day's midnight.
std::string date_value(std::string_view value) {
  value = trimmed(value);
  const std::size_t at = value.find("T24");
  if (at != 8 || value.size() < 15) return std::string(value);
  const auto day = parse_date(value.substr(0, 8));
  if (!day) return std::string(value);
  return day_text(day->local + kSecondsPerDay) + "T000000" + std::string(value.substr(15));
}

// Local times are those of the property's own zone, else of the calendar's.
std::string date_line(const std::string& name, const Property& property,
                      const std::string& calendar_zone) {
  std::string line = name;
  std::string joined;
  bool all_dates = true, all_local = true;
  const std::string_view value = trimmed(property.value);
  for (const std::string_view one : split_values(value, ';')) {
    const std::string date = date_value(one);
    if (date.empty()) continue;
    all_dates = all_dates && date.size() == 8;
    all_local = all_local && date.size() == 15;
    joined += (joined.empty() ? "" : ",") + date;
  }
  const std::string zone = tzid_of(property).value_or(calendar_zone);
  if (all_dates && !joined.empty()) line += ";VALUE=DATE";
  if (all_local && !joined.empty() && !zone.empty()) line += ";TZID=" + parameter_text(zone);
  return folded(line + ":" + joined);
}

std::string alarm(const Property& property, std::string_view start) {
  const std::vector<std::string_view> parts = split_values(property.value, ';');
  std::string trigger;
  const std::string when = date_value(parts[0]);
  const auto at = parse_date(when), from = parse_date(date_value(start));
  if (at && from && at->utc == from->utc)
    trigger = "TRIGGER:" + duration_text(at->local - from->local);
  else if (at)
    trigger = "TRIGGER;VALUE=DATE-TIME:" + when;
  else if (parse_duration(when))
    trigger = "TRIGGER:" + when;
  else
    return {};
  const bool sound = property.named("AALARM");
  std::string text = "BEGIN:VALARM\r\nACTION:" + std::string(sound ? "AUDIO" : "DISPLAY") + "\r\n" +
                     folded(trigger);
  if (!sound) {
    Property words = property;
    words.value = parts.size() > 3 ? parts[3] : std::string_view();
    const std::string shown = plain_text(words);
    append_folded(text, "DESCRIPTION:" + escape_text(shown.empty() ? "Reminder" : shown));
  }
  if (parts.size() > 2 && parse_duration(parts[1]) && parse_whole_number(parts[2]).value_or(0) > 0)
    text += "REPEAT:" + std::string(parts[2]) + "\r\nDURATION:" + std::string(parts[1]) + "\r\n";
  return text + "END:VALARM\r\n";
}

// "Name <address>" or an address alone.
std::string attendee(const Property& property) {
  const std::string text = plain_text(property);
  const std::size_t open = text.find('<'), close = text.find('>');
  std::string address = text, name;
  if (open != std::string::npos && close != std::string::npos && close > open) {
    address = text.substr(open + 1, close - open - 1);
    name = std::string(trimmed(std::string_view(text).substr(0, open)));
  }
  std::string line = "ATTENDEE";
  if (!name.empty()) line += ";CN=" + parameter_text(name);
  return folded(line + ":mailto:" + std::string(trimmed(address)));
}

std::string categories(const Property& property) {
  std::string joined;
  for (const std::string_view one : split_values(property.value, ';')) {
    Property label = property;
    label.value = trimmed(one);
    joined += (joined.empty() ? "" : ",") + escape_text(plain_text(label));
  }
  return folded("CATEGORIES:" + joined);
}

class Converter {
 public:
  Converter(std::string_view text, int line, const std::string& zone, ProblemList& problems)
      : text_(text), line_(line), zone_(zone), problems_(problems) {}

  std::string run() {
    std::string out;
    Property property;
    for (std::string line; next(line);) {
      if (!split_property(line, property)) continue;
      if (property.named("DTSTART")) start_ = std::string(property.value);
    }
    at_ = 0;
    lines_read_ = 0;
    for (std::string line; next(line);) {
      if (split_property(line, property))
        out += converted(property);
      else if (!trimmed(line).empty())
        problems_.add(line_ + lines_read_ - 1, "line is no property; left out");
    }
    return out;
  }

 private:
  // One logical line: a quoted-printable value goes on behind a "=" at the end of its line.
  bool next(std::string& line) {
    std::string_view piece;
    if (!next_line(text_, at_, piece)) return false;
    ++lines_read_;
    line = std::string(piece);
    Property property;
    const bool quoted = split_property(line, property) && is_quoted_printable(property);
    while (quoted && trimmed(line).ends_with('=') && next_line(text_, at_, piece)) {
      ++lines_read_;
      line.resize(line.rfind('='));  // blanks behind it come from the way
      line += piece;
    }
    while (!quoted && at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t')) {
      next_line(text_, at_, piece);
      ++lines_read_;
      line += piece;  // here the blank is part of the text
    }
    return true;
  }

  std::string converted(const Property& property) {
    const std::string_view value = trimmed(property.value);
    if (property.named("BEGIN") || property.named("END"))
      return std::string(property.name) + ":" + std::string(value) + "\r\n";
    for (const char* name : {"DTSTART", "DTEND", "EXDATE", "RDATE", "DUE", "COMPLETED",
                             "LAST-MODIFIED", "RECURRENCE-ID"})
      if (property.named(name)) return date_line(name, property, zone_);
    if (property.named("DCREATED")) return date_line("CREATED", property, zone_);
    if (property.named("RRULE") || property.named("EXRULE")) {
      const std::string rule = rule_from_vcalendar1(value);
      // What cannot be read is kept, and complained of with the rest of the event.
      return folded(std::string(property.name) + ":" + (rule.empty() ? std::string(value) : rule));
    }
    if (property.named("DALARM") || property.named("AALARM") || property.named("PALARM"))
      return alarm(property, start_);
    if (property.named("CATEGORIES")) return categories(property);
    if (property.named("ATTENDEE")) return attendee(property);
    if (property.named("TRANSP"))
      return value == "0" || equal_ignoring_case(value, "OPAQUE") ? "TRANSP:OPAQUE\r\n"
                                                                  : "TRANSP:TRANSPARENT\r\n";
    if (property.named("STATUS") && equal_ignoring_case(value, "NEEDS ACTION"))
      return "STATUS:NEEDS-ACTION\r\n";
    const bool words = property.named("SUMMARY") || property.named("DESCRIPTION") ||
                       property.named("LOCATION") || is_quoted_printable(property);
    if (words) return folded(std::string(property.name) + ":" + escape_text(plain_text(property)));
    return folded(std::string(property.name) + std::string(property.parameters) + ":" +
                  std::string(property.value));
  }

  std::string_view text_;
  int line_;
  const std::string& zone_;
  ProblemList& problems_;
  std::size_t at_ = 0;
  int lines_read_ = 0;
  std::string start_;
};

bool is_weekday(std::string_view word) {
  for (const char* name : {"SU", "MO", "TU", "WE", "TH", "FR", "SA"})
    if (word == name) return true;
  return false;
}

// "1+" is 1, "2-" is -2, "LD" (the last day) is -1; 0 for anything else.
int signed_number(std::string_view word) {
  if (word == "LD") return -1;
  const bool minus = word.ends_with('-');
  if (minus || word.ends_with('+')) word.remove_suffix(1);
  const int number = parse_whole_number(word).value_or(0);
  return minus ? -number : number;
}

void append_item(std::string& list, const std::string& item) {
  list += (list.empty() ? "" : ",") + item;
}

// One step of the grammar: a frequency word and the words behind it.
struct OldRule {
  std::string frequency, interval, days, month_days, months, year_days, end;
  char kind = 0;  // what the words behind mean: W, P (weekdays of a month), D, M, Y
  int ordinal = 0;

  bool begin(std::string_view word) {
    struct Row {
      std::string_view word, frequency;
      char kind;
    };
    constexpr Row kRows[] = {{"MP", "MONTHLY", 'P'}, {"MD", "MONTHLY", 'D'}, {"YM", "YEARLY", 'M'},
                             {"YD", "YEARLY", 'Y'},  {"D", "DAILY", '-'},    {"W", "WEEKLY", 'W'}};
    for (const Row& row : kRows) {
      if (!word.starts_with(row.word)) continue;
      const std::string_view number = word.substr(row.word.size());
      if (parse_whole_number(number).value_or(0) < 1) return false;
      kind = row.kind;
      ordinal = 0;
      if (!frequency.empty()) return true;  // a rule within a rule narrows the outer one
      frequency = row.frequency;
      interval = std::string(number);
      return true;
    }
    return false;
  }

  bool take(std::string_view word) {
    if (word.starts_with('#')) {
      const auto count = parse_whole_number(word.substr(1));
      if (!count || *count < 0) return false;
      end = *count == 0 ? "-" : ";COUNT=" + std::to_string(*count);
      return true;
    }
    if (const auto until = parse_date(word)) {
      end = ";UNTIL=" + std::string(word);
      return true;
    }
    if (is_weekday(word) && (kind == 'W' || kind == 'P')) {
      append_item(days, (ordinal ? std::to_string(ordinal) : std::string()) + std::string(word));
      return true;
    }
    const int number = signed_number(word);
    if (number == 0) return begin(word);
    if (kind == 'P') ordinal = number;
    if (kind == 'D') append_item(month_days, std::to_string(number));
    if (kind == 'M') append_item(months, std::to_string(number));
    if (kind == 'Y') append_item(year_days, std::to_string(number));
    return kind != 0;
  }

  std::string text() const {
    if (frequency.empty()) return {};
    std::string rule = "FREQ=" + frequency;
    // Without an end the older form means two occurrences.
    rule += end.empty() ? ";COUNT=2" : end == "-" ? std::string() : end;
    if (interval != "1") rule += ";INTERVAL=" + interval;
    if (!days.empty()) rule += ";BYDAY=" + days;
    if (!month_days.empty()) rule += ";BYMONTHDAY=" + month_days;
    if (!year_days.empty()) rule += ";BYYEARDAY=" + year_days;
    if (!months.empty()) rule += ";BYMONTH=" + months;
    return rule;
  }
};

}  // namespace

std::string component_from_vcalendar1(std::string_view text, int first_line,
                                      const std::string& zone, ProblemList& problems) {
  return Converter(text, first_line, zone, problems).run();
}

std::string without_quoted_printable(std::string_view text) {
  std::string out;
  std::string_view piece;
  Property property;
  for (std::size_t at = 0; next_line(text, at, piece);) {
    if (!split_property(piece, property) || !is_quoted_printable(property)) {
      out.append(piece).append("\r\n");
      continue;
    }
    std::string line(piece);
    while (trimmed(line).ends_with('=') && next_line(text, at, piece)) {
      line.resize(line.rfind('='));
      line += piece;
    }
    while (at < text.size() && (text[at] == ' ' || text[at] == '\t') && next_line(text, at, piece))
      line += piece.substr(1);
    split_property(line, property);
    const std::string value = text_from(from_quoted_printable(property.value),
                                        parameter(property, "CHARSET").value_or(""));
    std::string plain(property.name);
    for (const std::string_view one : split_values(property.parameters, ';'))
      if (!one.empty() && !equal_ignoring_case(one.substr(0, 8), "CHARSET=") &&
          !equal_ignoring_case(one.substr(0, 9), "ENCODING=") &&
          !equal_ignoring_case(one, "QUOTED-PRINTABLE"))
        plain.append(";").append(one);
    plain += ':';
    for (const char c : value)  // what else had to be escaped is so already
      if (c == '\n')
        plain += "\\n";
      else if (c != '\r' && c != '\0')
        plain += c;
    append_folded(out, plain);
  }
  return out;
}

std::string rule_from_vcalendar1(std::string_view rule) {
  OldRule parsed;
  std::size_t at = 0;
  while (at < rule.size()) {
    const std::size_t end = std::min(rule.find(' ', at), rule.size());
    const std::string_view word = trimmed(rule.substr(at, end - at));
    at = end + 1;
    if (!word.empty() && !parsed.take(word)) return {};
  }
  return parsed.text();
}

}  // namespace orvello
