// Splits a file into its calendars and their components without understanding them: only BEGIN and
// END count. A file of any size and encoding passes through and comes out as UTF-8; what is outside
// a calendar is never kept.
#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/line_reader.h"
#include "exchange/problem_list.h"

namespace orvello {

struct ScannedComponent {
  std::string kind;  // in capitals
  std::size_t offset = 0;
  std::size_t length = 0;
  int line = 0;
};

struct ScannedCalendar {
  int line = 0;
  std::string header;  // its own properties, "\n" behind each line
  std::string text;    // the components, one behind the other
  std::vector<ScannedComponent> components;
  int broken_events = 0;  // and cards
  bool bare = true;       // what stood outside of one

  std::string_view text_of(const ScannedComponent& component) const {
    return std::string_view(text).substr(component.offset, component.length);
  }
};

class CalendarScanner {
 public:
  CalendarScanner(std::istream& in, ProblemList& problems) : lines_(in), problems_(problems) {}

  // The next calendar, complete or not; components outside of one make a calendar of their own,
  // and many cards make several.
  bool next(ScannedCalendar& calendar);

  // The same in pieces: some lines more of the calendar that `begin` makes room for.
  enum class Piece { more, calendar, end };
  void begin(ScannedCalendar& calendar);
  Piece scan(ScannedCalendar& calendar, int lines);
  std::uint64_t bytes_read() const { return lines_.bytes_read(); }

 private:
  enum class Step { go_on, calendar_done };
  Step take(std::string_view line, ScannedCalendar& calendar);
  Step take_outside(std::string_view line, std::string_view begun, ScannedCalendar& calendar);
  Step take_in_calendar(std::string_view line, std::string_view begun, std::string_view ended,
                        ScannedCalendar& calendar);
  Step take_in_component(std::string_view line, std::string_view begun, std::string_view ended,
                         ScannedCalendar& calendar);
  bool in_card() const;
  std::size_t largest() const;  // that the component at hand may be
  void start_calendar(ScannedCalendar& calendar);
  void start_component(std::string_view line, std::string_view kind, ScannedCalendar& calendar);
  void finish_component(ScannedCalendar& calendar);
  void drop_component(ScannedCalendar& calendar, const std::string& why);
  void finish_file(ScannedCalendar& calendar);
  void repair(ScannedCalendar& calendar);

  LineReader lines_;
  ProblemList& problems_;
  std::vector<std::string> open_;  // components that have begun, without the calendar
  bool in_calendar_ = false;       // between BEGIN:VCALENDAR and its END
  bool too_large_ = false;
  bool recovering_ = false;    // behind a component that was given up
  bool card_follows_ = false;  // the line before is a card's property whose value is a card
  bool found_any_ = false;
  bool text_outside_ = false;
  bool begin_pending_ = false;  // a BEGIN:VCALENDAR ended the calendar before it
  bool told_nul_ = false, told_encoding_ = false;
  ScannedComponent component_;
};

}  // namespace orvello
