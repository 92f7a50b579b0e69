#include "views/year_marks.h"

#include "calendar/dates.h"
#include "store/restriction.h"
#include "views/draw_control.h"
#include "views/item_days.h"

namespace orvello {

namespace {

// From one 29 February over 1900, which has none, to the next: as many days hold every date there
// is, so walking further sets no other flag.
constexpr std::int32_t kAllDates = 2921;

// The profile is asked only about items that would mark something new. Whether more of the same
// days would tell nothing new.
bool mark_days(const DaySpan& span, const Text& categories, ProfileMemory& allowed,
               YearMarks& marks) {
  const Day last = std::min(span.last, span.first + kAllDates);
  const bool repeats = span.last - span.first >= 365;
  YearMarks counted;  // of a span that holds a date more than once
  bool passed = false, all_busy = true;
  for (Day day = span.first; day <= last; ++day) {
    const SystemTime date = civil_of(day);
    if (marks.busy(date.month, date.day) || counted.at(date.month, date.day)) continue;
    if (repeats) counted.add(date.month, date.day);
    if (!passed && !allowed.passes(categories)) return marks.hide_one(), false;
    passed = true;
    marks.add(date.month, date.day);
    all_busy &= marks.busy(date.month, date.day);
  }
  return all_busy;
}

}  // namespace

Text year_restriction(int year) {
  const Day first = day_of(year, 1, 1);
  return restriction_to(first, first + 365);
}

MarksOutcome BuildYearMarks(int year, const ItemsSource& source, const ProfileTest& passes,
                            const std::atomic<int>& draw_state, YearMarks& marks) {
  const auto stopped = [&] { return draw_state.load(std::memory_order_relaxed) == kDrawRequested; };
  marks = {};
  if (stopped()) return MarksOutcome::given_up;
  const std::unique_ptr<StoreItems> all = source();
  if (!all) return MarksOutcome::unreadable;
  all->sort(u"[Start]", false);
  all->set_include_recurrences(true);
  all->want({AppointmentField::categories});
  all->stop_when(stopped);
  const std::unique_ptr<StoreItems> items = all->restrict_to(year_restriction(year));

  ProfileMemory allowed(passes);
  DaySpan known;  // busy days alone; a full calendar has hundreds in a row that add nothing
  const bool whole = each_item(items.get(), [&](const StoreItem& item) {
    if (!item.summary) return !stopped();
    const DaySpan span = days_of(item);
    const bool is_known = span.first >= known.first && span.last <= known.last;
    if (!is_known && mark_days(span, item.summary->categories, allowed, marks)) known = span;
    return !stopped();
  });
  if (stopped()) return MarksOutcome::given_up;
  return whole ? MarksOutcome::finished : MarksOutcome::unreadable;
}

}  // namespace orvello
