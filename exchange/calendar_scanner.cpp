#include "exchange/calendar_scanner.h"

#include <algorithm>

#include "exchange/charset.h"
#include "exchange/content_line.h"
#include "exchange/text_repair.h"

namespace orvello {
namespace {

// Far above any attachment people mail each other; what is larger is no appointment.
constexpr std::size_t kLargestComponent = 32 << 20;
constexpr std::size_t kLargestCard = 64 << 20;  // a picture of 30 MB and more
constexpr std::size_t kEnoughCards = 1 << 20;
constexpr std::size_t kLargestHeader = 1 << 18;
constexpr std::size_t kLongestOutside = 256;
constexpr std::size_t kDeepest = 16;

// The value of "BEGIN:value" or "END:value" for that word, empty for any other line.
std::string_view marked(std::string_view line, std::string_view word) {
  if (line.size() <= word.size() || line[word.size()] != ':') return {};
  if (!equal_ignoring_case(line.substr(0, word.size()), word)) return {};
  return trimmed(line.substr(word.size() + 1));
}

std::string in_capitals(std::string_view name) {
  std::string kind(name);
  for (char& c : kind)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  return kind;
}

}  // namespace

bool CalendarScanner::next(ScannedCalendar& calendar) {
  constexpr int kMany = 1 << 20;
  begin(calendar);
  Piece piece = Piece::more;
  while (piece == Piece::more) piece = scan(calendar, kMany);
  return piece == Piece::calendar;
}

void CalendarScanner::begin(ScannedCalendar& calendar) {
  calendar = ScannedCalendar();
  open_.clear();
  in_calendar_ = recovering_ = false;
  if (begin_pending_) start_calendar(calendar);
  begin_pending_ = false;
}

CalendarScanner::Piece CalendarScanner::scan(ScannedCalendar& calendar, int lines) {
  std::string_view line;
  const auto longest = [&] { return in_calendar_ || !open_.empty() ? largest() : kLongestOutside; };
  for (int i = 0; i < lines; ++i) {
    const bool there = lines_.next(line, longest());
    if (there && take(line, calendar) == Step::go_on) continue;
    if (!there) finish_file(calendar);
    repair(calendar);
    const bool any = in_calendar_ || !calendar.components.empty() || calendar.broken_events > 0;
    return there || any ? Piece::calendar : Piece::end;
  }
  return Piece::more;
}

bool CalendarScanner::in_card() const {
  return !in_calendar_ && !open_.empty() && component_.kind == "VCARD";
}

std::size_t CalendarScanner::largest() const {
  return in_card() ? kLargestCard : kLargestComponent;
}

CalendarScanner::Step CalendarScanner::take(std::string_view line, ScannedCalendar& calendar) {
  const char first = line.empty() ? '\0' : line.front();
  std::string_view begun, ended;
  if (first == 'B' || first == 'b') begun = marked(line, "BEGIN");
  if (first == 'E' || first == 'e') ended = marked(line, "END");
  if (!open_.empty()) return take_in_component(line, begun, ended, calendar);
  if (in_calendar_) return take_in_calendar(line, begun, ended, calendar);
  return take_outside(line, begun, calendar);
}

void CalendarScanner::start_calendar(ScannedCalendar& calendar) {
  in_calendar_ = found_any_ = true;
  calendar.bare = false;
  calendar.line = lines_.number();
}

CalendarScanner::Step CalendarScanner::take_outside(std::string_view line, std::string_view begun,
                                                    ScannedCalendar& calendar) {
  if (equal_ignoring_case(begun, "VCALENDAR")) {
    if (!calendar.components.empty() || calendar.broken_events > 0) {
      begin_pending_ = true;
      return Step::calendar_done;
    }
    start_calendar(calendar);
  } else if (equal_ignoring_case(begun, "VCARD") ||
             (begun.size() > 1 && begun.front() == 'V' && is_utf8(begun))) {
    if (calendar.components.empty()) calendar.line = lines_.number();
    found_any_ = true;
    start_component(line, begun, calendar);
  } else if (!trimmed(line).empty() && found_any_ && !recovering_ && !text_outside_) {
    text_outside_ = true;
    problems_.add(lines_.number(), "text outside of a calendar is left out");
  }
  return Step::go_on;
}

CalendarScanner::Step CalendarScanner::take_in_calendar(std::string_view line,
                                                        std::string_view begun,
                                                        std::string_view ended,
                                                        ScannedCalendar& calendar) {
  if (!ended.empty()) {
    if (equal_ignoring_case(ended, "VCALENDAR")) return Step::calendar_done;
    if (!recovering_) problems_.add(lines_.number(), "END without a BEGIN");
    recovering_ = false;
  } else if (equal_ignoring_case(begun, "VCALENDAR")) {
    problems_.add(lines_.number(), "a new calendar begins before the one before it has ended");
    begin_pending_ = true;
    return Step::calendar_done;
  } else if (!begun.empty()) {
    start_component(line, begun, calendar);
  } else if (recovering_) {
    return Step::go_on;  // what is left of a component that was given up
  } else if (calendar.header.size() + line.size() < kLargestHeader) {
    calendar.header.append(line).append("\n");
  } else if (!text_outside_) {
    text_outside_ = true;
    problems_.add(lines_.number(), "the calendar's own properties are too long; cut here");
  }
  return Step::go_on;
}

CalendarScanner::Step CalendarScanner::take_in_component(std::string_view line,
                                                         std::string_view begun,
                                                         std::string_view ended,
                                                         ScannedCalendar& calendar) {
  const bool calendar_mark =
      equal_ignoring_case(begun, "VCALENDAR") || equal_ignoring_case(ended, "VCALENDAR");
  const bool event_in_event =
      equal_ignoring_case(begun, "VEVENT") && equal_ignoring_case(open_.front(), "VEVENT");
  // A card may be a value within a card ("AGENT:"); else the one before has no end.
  const bool card_in_card = in_card() && equal_ignoring_case(begun, "VCARD") && !card_follows_;
  card_follows_ = in_card() && !trimmed(line).empty() && trimmed(line).back() == ':';
  if (calendar_mark || event_in_event || card_in_card) {
    drop_component(calendar, "has no END");
    return take(line, calendar);
  }
  const std::size_t length = calendar.text.size() - component_.offset;
  if (too_large_ || lines_.was_cut() || length + line.size() > largest()) {
    too_large_ = true;
    calendar.text.resize(component_.offset);
  } else {
    calendar.text.append(line).append("\n");
  }
  if (!begun.empty()) {
    open_.push_back(std::string(begun));
    if (open_.size() > kDeepest) drop_component(calendar, "is nested too deeply");
  } else if (!ended.empty()) {
    if (!equal_ignoring_case(ended, open_.back())) {
      drop_component(calendar, "ends with END:" + std::string(ended.substr(0, 40)));
    } else {
      const bool card = in_card();
      open_.pop_back();
      if (open_.empty()) finish_component(calendar);
      if (card && open_.empty() && calendar.text.size() >= kEnoughCards) return Step::calendar_done;
    }
  }
  return Step::go_on;
}

void CalendarScanner::start_component(std::string_view line, std::string_view kind,
                                      ScannedCalendar& calendar) {
  open_.assign(1, std::string(kind));
  too_large_ = recovering_ = false;
  component_ = {in_capitals(kind), calendar.text.size(), 0, lines_.number()};
  calendar.text.append(line).append("\n");
}

void CalendarScanner::finish_component(ScannedCalendar& calendar) {
  if (too_large_) {
    drop_component(calendar, "is too large");
    recovering_ = false;
    return;
  }
  component_.length = calendar.text.size() - component_.offset;
  calendar.components.push_back(component_);
}

// Once the calendar is complete, as what its encoding may be is seen best in all of it.
void CalendarScanner::repair(ScannedCalendar& calendar) {
  const bool odd_header = needs_repair(calendar.header), odd_text = needs_repair(calendar.text);
  if (!odd_header && !odd_text) return;
  std::string sample;
  if (odd_header) collect_foreign(calendar.header, sample);
  if (odd_text) collect_foreign(calendar.text, sample);
  const std::string_view charset = guess_charset(sample);
  const auto repaired = [&](std::string_view lines, int first_line) {
    LineRepair repair = repair_lines(lines, charset);
    if (repair.had_nul && !std::exchange(told_nul_, true))
      problems_.add(first_line, "NUL bytes are left out");
    if (repair.first_foreign >= 0 && !std::exchange(told_encoding_, true))
      problems_.add(first_line + repair.first_foreign,
                    "text is not UTF-8; read as " + std::string(charset));
    for (const int line : repair.damaged)
      problems_.add(first_line + line, "bytes that are no text are shown as \xEF\xBF\xBD");
    return std::move(repair.text);
  };
  if (odd_header) calendar.header = repaired(calendar.header, calendar.line + 1);
  if (!odd_text) return;
  std::string text;
  for (ScannedComponent& component : calendar.components) {
    const std::string_view before = calendar.text_of(component);
    component.offset = text.size();
    if (needs_repair(before))
      text += repaired(before, component.line);
    else
      text += before;
    component.length = text.size() - component.offset;
  }
  calendar.text = std::move(text);
}

// Lines up to the next BEGIN or END belong to nothing; the calendar goes on behind them.
void CalendarScanner::drop_component(ScannedCalendar& calendar, const std::string& why) {
  problems_.add(component_.line, component_.kind.substr(0, 40) + " " + why + "; left out");
  calendar.broken_events +=
      component_.kind == "VEVENT" || (component_.kind == "VCARD" && !in_calendar_);
  calendar.text.resize(component_.offset);
  open_.clear();
  recovering_ = true;
}

void CalendarScanner::finish_file(ScannedCalendar& calendar) {
  if (!open_.empty())
    drop_component(calendar, "is cut off by the end of the file");
  else if (in_calendar_)
    problems_.add(lines_.number(), "the calendar has no END:VCALENDAR");
  else if (!found_any_)
    problems_.add(1, "no calendar and no contact in this file");
}

}  // namespace orvello
