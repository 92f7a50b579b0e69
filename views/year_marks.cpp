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

// The profile is asked only about items that would mark something new. Whether all the days are
// marked now.
bool mark_days(const DaySpan& span, const Text& categories, ProfileMemory& allowed,
               YearMarks& marks) {
  const Day last = std::min(span.last, span.first + kAllDates);
  bool passed = false;
  for (Day day = span.first; day <= last; ++day) {
    const SystemTime date = civil_of(day);
    if (marks.at(date.month, date.day)) continue;
    if (!passed && !allowed.passes(categories)) return false;
    passed = true;
    marks.set(date.month, date.day);
  }
  return true;
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
  DaySpan known;  // as good as marked; a full calendar has hundreds in a row that add nothing
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
