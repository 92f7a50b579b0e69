// Which days of a year have appointments. User-interface thread, as all access to the store.
#pragma once

#include <array>
#include <atomic>

#include "views/period_query.h"

namespace orvello {

// A flag for each month and day, whatever the year.
class YearMarks {
 public:
  bool at(int month, int day) const { return flags_[index(month, day)]; }
  void set(int month, int day) { flags_[index(month, day)] = true; }
  friend bool operator==(const YearMarks&, const YearMarks&) = default;

 private:
  static std::size_t index(int month, int day) {
    return static_cast<std::size_t>(month * 31 + day - 32);
  }
  std::array<bool, 12 * 31> flags_{};
};

// The upper bound lies 365 days after 1 January also in a leap year.
Text year_restriction(int year);

enum class MarksOutcome {
  finished,
  given_up,    // the draw state is at 100
  unreadable,  // the store failed
};

// Unless finished, the marks are incomplete. An appointment that reaches beyond the year marks its
// days of the neighbouring years in this year's table too.
MarksOutcome BuildYearMarks(int year, const ItemsSource& source, const ProfileTest& passes,
                            const std::atomic<int>& draw_state, YearMarks& marks);

}  // namespace orvello
