// Copies of the calendar's last good days, in the folder "backups" beside it: one for a day on
// which something had changed, made by the database itself, checked as a whole, put in place in one
// step and never replaced. The last seven stay, one for each of four weeks and of six months.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/result.h"
#include "calendar/dates.h"

namespace orvello {

struct CalendarCopy {
  std::string path;
  MonthDayYear day;
};

class CalendarCopies {
 public:
  explicit CalendarCopies(std::string calendar);  // the path of calendar.db

  // Newest first; those of days after `today`, which a wrong clock made, come last.
  std::vector<CalendarCopy> list(MonthDayYear today) const;
  // None was made today, and the calendar has changed since the newest was.
  bool is_due(MonthDayYear today) const;
  // Makes today's copy and thins out the others. The calendar may be in use. Nothing when none is
  // due; fails with the reason, by name: the calendar is damaged, the disk is full.
  Result<std::optional<CalendarCopy>> take(MonthDayYear today) const;
  // The newest one that is whole.
  std::optional<CalendarCopy> newest_good(MonthDayYear today) const;

 private:
  void thin_out(MonthDayYear today) const;

  std::string calendar_, folder_;
};

// Which of `days` (newest first) stay: the first seven, and the newest in each of the newest four
// weeks and six months.
std::vector<bool> copies_to_keep(const std::vector<MonthDayYear>& days);

}  // namespace orvello
