// Which days of a year have appointments, and which have many. User-interface thread, as all access
// to the store.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>

#include "views/period_query.h"

namespace orvello {

// So many appointments make a day a busy one.
inline constexpr int kBusyDay = 4;

// For each month and day, whatever the year: how many appointments, counted up to kBusyDay.
class YearMarks {
 public:
  bool at(int month, int day) const { return counts_[index(month, day)] > 0; }
  bool busy(int month, int day) const { return counts_[index(month, day)] == kBusyDay; }
  void add(int month, int day) {
    std::uint8_t& count = counts_[index(month, day)];
    if (count < kBusyDay) ++count;
  }
  bool none() const { return counts_ == decltype(counts_){}; }
  // There are appointments, and the profile lets none of them be seen.
  bool all_hidden() const { return hides_some_ && none(); }
  void hide_one() { hides_some_ = true; }
  friend bool operator==(const YearMarks&, const YearMarks&) = default;

 private:
  static std::size_t index(int month, int day) {
    return static_cast<std::size_t>(month * 31 + day - 32);
  }
  std::array<std::uint8_t, 12 * 31> counts_{};
  bool hides_some_ = false;
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
