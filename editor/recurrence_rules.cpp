#include "editor/recurrence_rules.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "calendar/dates.h"
#include "calendar/next_dates.h"
#include "resources/recurrence_ids.h"

namespace orvello {
namespace {

constexpr int kWholeWeek = 127;

CalendarDate whole(CalendarDate date) { return to_calendar_date(whole_day(date)); }

bool is_real(CalendarDate date) { return date > 0 && date < kNoDate; }

int row_of_mask(int mask) {
  const auto found = std::find(kDayKindMasks.begin(), kDayKindMasks.end(), mask);
  return found == kDayKindMasks.end() ? -1 : static_cast<int>(found - kDayKindMasks.begin());
}

int kind_row(RecurrenceType type) {
  switch (type) {
    case RecurrenceType::daily:
      return kRowDaily;
    case RecurrenceType::weekly:
      return kRowWeekly;
    case RecurrenceType::monthly:
    case RecurrenceType::month_nth:
      return kRowMonthly;
    default:
      return kRowYearly;
  }
}

// What pages show that the pattern says nothing about: what suits its first day.
RecurrenceForm suggested(CalendarDate first) {
  const MonthDayYear day = triple_of(first);
  const int weekday = DayOfWeek(day.month, day.day, day.year);
  RecurrenceForm form;
  form.start_date = form.end_date = whole(first);
  form.weekdays = 1 << weekday;
  form.month_day = form.year_day = day.day;
  form.month_instance = form.year_instance = (day.day - 1) / 7;
  form.month_kind = form.year_kind = kNamedDay + weekday;
  form.year_month = form.nth_month = day.month - 1;
  return form;
}

void show_months(const RecurrencePattern& pattern, RecurrenceForm& form) {
  const int interval = std::max(1, pattern.interval);
  const int kind = row_of_mask(pattern.day_of_week_mask);
  form.month_nth = pattern.instance != 0;
  if (form.month_nth) {
    form.month_instance = std::clamp(pattern.instance, 1, 5) - 1;
    if (kind >= 0) form.month_kind = kind;
    form.nth_interval = interval;
  } else {
    form.month_day = std::clamp(pattern.day_of_month, 1, 31);
    form.monthly_interval = interval;
  }
}

void show_years(const RecurrencePattern& pattern, RecurrenceForm& form) {
  const int month = std::clamp(pattern.month_of_year, 1, 12) - 1;
  const int kind = row_of_mask(pattern.day_of_week_mask);
  form.yearly_interval = std::max(1, pattern.interval);
  form.year_nth = pattern.instance != 0;
  form.year_month = form.nth_month = month;
  if (form.year_nth) {
    form.year_instance = std::clamp(pattern.instance, 1, 5) - 1;
    if (kind >= 0) form.year_kind = kind;
    form.year_day = std::min(form.year_day, longest_month(month + 1));
  } else {
    form.year_day = std::clamp(pattern.day_of_month, 1, longest_month(month + 1));
  }
}

// A count wins over an end that only follows from it.
void show_range(const RecurrencePattern& pattern, RecurrenceForm& form) {
  if (is_real(pattern.pattern_end_date)) form.end_date = whole(pattern.pattern_end_date);
  if (pattern.no_end_date) return;
  form.end = SeriesEnd::by_date;
  if (pattern.occurrences < 1) return;
  const auto last = last_instance(pattern);
  const bool follows = last && whole_day(pattern.pattern_end_date) == day_of(*last);
  if (is_real(pattern.pattern_end_date) && !follows) return;
  form.end = SeriesEnd::by_count;
  form.count = pattern.occurrences;
}

// The day on which the pattern's first occurrence falls, from its start date on.
Day first_day(const RecurrencePattern& pattern) { return day_of(pattern_start(pattern)); }

// The first matching date, as `searched` found it, where it is one on or after the pattern's start:
// a search may find none, an earlier day, or one that a short month does not have.
void begin_on(CalendarDate searched, RecurrencePattern& pattern) {
  RecurrencePattern moved = pattern;
  moved.pattern_start_date = searched;
  const bool suits = searched != NoDateSentinel && searched >= pattern.pattern_start_date &&
                     searched < kNoDate && first_day(moved) == whole_day(searched);
  pattern.pattern_start_date = suits ? searched : to_calendar_date(first_day(pattern));
}

// The searches count on from a date by so many months; one that leads nowhere is left to begin_on.
constexpr int kMostSearched = 12000;

void write_daily(const RecurrenceForm& form, RecurrencePattern& pattern) {
  pattern.type = form.every_weekday ? RecurrenceType::weekly : RecurrenceType::daily;
  pattern.interval = form.every_weekday ? 0 : form.daily_interval;
  pattern.day_of_week_mask = form.every_weekday ? kEveryWeekdayMask : 0;
  pattern.instance = pattern.day_of_month = 0;
}

void write_weekly(const RecurrenceForm& form, RecurrencePattern& pattern) {
  pattern.type = RecurrenceType::weekly;
  pattern.interval = form.weekly_interval;
  pattern.day_of_week_mask = form.weekdays;
  pattern.instance = pattern.day_of_month = 0;
  begin_on(NextWeeklyDate(form.start_date, form.weekly_interval, form.weekdays), pattern);
}

void write_monthly(const RecurrenceForm& form, RecurrencePattern& pattern) {
  if (form.month_nth) {
    pattern.type = RecurrenceType::month_nth;
    pattern.instance = form.month_instance + 1;
    pattern.day_of_week_mask = kDayKindMasks[static_cast<std::size_t>(form.month_kind)];
    pattern.interval = form.nth_interval;
    pattern.day_of_month = 0;
    return;
  }
  pattern.type = RecurrenceType::monthly;
  pattern.day_of_month = form.month_day;
  pattern.interval = form.monthly_interval;
  pattern.instance = pattern.day_of_week_mask = 0;
  const int step = std::min(form.monthly_interval, kMostSearched);
  begin_on(NextMonthlyDate(1, form.start_date, step, form.month_day), pattern);
}

void write_yearly(const RecurrenceForm& form, RecurrencePattern& pattern) {
  pattern.interval = form.yearly_interval;
  if (form.year_nth) {
    pattern.type = RecurrenceType::year_nth;
    pattern.instance = form.year_instance + 1;
    pattern.day_of_week_mask = kDayKindMasks[static_cast<std::size_t>(form.year_kind)];
    pattern.month_of_year = form.nth_month + 1;
    pattern.day_of_month = 0;
    begin_on(NextYearlyDate(2, form.start_date, pattern.instance, form.year_kind,
                            pattern.month_of_year, 0),
             pattern);
    return;
  }
  pattern.type = RecurrenceType::yearly;
  pattern.month_of_year = form.year_month + 1;
  pattern.day_of_month = form.year_day;
  pattern.instance = pattern.day_of_week_mask = 0;
  begin_on(NextYearlyDate(1, form.start_date, 0, 0, pattern.month_of_year, form.year_day), pattern);
}

RecurrenceFault interval_fault(int step, int control, Language language) {
  return {load_string(StringId::box_least_interval, language), step, control};
}

RecurrenceFault day_fault(int step, int control, int most, Language language) {
  return {format(load_string(StringId::box_day_range, language), most), step, control};
}

std::optional<RecurrenceFault> kind_fault(const RecurrenceForm& form, Language language) {
  switch (form.kind) {
    case kRowDaily:
      if (!form.every_weekday && form.daily_interval < 1)
        return interval_fault(kStepDaily, kControlDailyInterval, language);
      break;
    case kRowWeekly:
      if (form.weekly_interval < 1)
        return interval_fault(kStepWeekly, kControlWeeklyInterval, language);
      break;
    case kRowMonthly:
      if (!form.month_nth && (form.month_day < 1 || form.month_day > 31))
        return day_fault(kStepMonthly, kControlMonthDay, 31, language);
      if (!form.month_nth && form.monthly_interval < 1)
        return interval_fault(kStepMonthly, kControlMonthlyInterval, language);
      if (form.month_nth && form.nth_interval < 1)
        return interval_fault(kStepMonthly, kControlNthInterval, language);
      break;
    default: {
      const int most = longest_month(form.year_month + 1);
      if (!form.year_nth && (form.year_day < 1 || form.year_day > most))
        return day_fault(kStepYearly, kControlYearDay, most, language);
      if (form.yearly_interval < 1)
        return interval_fault(kStepYearly, kControlYearlyInterval, language);
    }
  }
  return std::nullopt;
}

// Occurrences of several days stay so: the times alone say nothing of that.
std::int32_t kept_duration(const RecurrenceForm& form, std::int32_t before) {
  constexpr int day = 24 * 60;
  if (before < day) return before;
  const double length = form.end_time - form.start_time;
  const auto minutes = static_cast<std::int32_t>(std::lround((length - std::floor(length)) * day));
  return before / day * day + minutes % day;
}

}  // namespace

int longest_month(int month) { return DaysInMonth(month - 1, 2000); }

RecurrenceForm recurrence_form(const RecurrencePattern& pattern, bool all_day) {
  RecurrenceForm form = suggested(pattern.pattern_start_date);
  form.kind = kind_row(pattern.type);
  form.all_day = all_day;
  form.start_time = time_of_day(pattern.start_time);
  form.end_time = time_of_day(pattern.end_time);
  const int mask = pattern.day_of_week_mask & kWholeWeek;
  switch (form.kind) {
    case kRowDaily:
      form.every_weekday = mask == kEveryWeekdayMask;
      if (!form.every_weekday) form.daily_interval = std::max(1, pattern.interval);
      break;
    case kRowWeekly:
      form.weekly_interval = std::max(1, pattern.interval);  // 0 means each week
      if (mask != 0) form.weekdays = mask;
      break;
    case kRowMonthly:
      show_months(pattern, form);
      break;
    default:
      show_years(pattern, form);
  }
  show_range(pattern, form);
  return form;
}

RecurrencePattern recurrence_pattern(const RecurrenceForm& form, const RecurrencePattern& before) {
  RecurrencePattern pattern = before;
  pattern.start_time = time_of_day(form.start_time);
  pattern.end_time = time_of_day(form.end_time);
  if (!form.all_day) pattern.duration = kept_duration(form, before.duration);
  pattern.pattern_start_date = whole(form.start_date);
  pattern.pattern_end_date = whole(form.end_date);
  pattern.no_end_date = form.end == SeriesEnd::none;
  pattern.occurrences = form.end == SeriesEnd::by_count ? form.count : -1;
  if (form.end != SeriesEnd::by_date) pattern.pattern_end_date = kNoDate;
  switch (form.kind) {
    case kRowDaily:
      write_daily(form, pattern);
      break;
    case kRowWeekly:
      write_weekly(form, pattern);
      break;
    case kRowMonthly:
      write_monthly(form, pattern);
      break;
    default:
      write_yearly(form, pattern);
  }
  return pattern;
}

int typed_count(TextView text) {
  constexpr std::int64_t most = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp<std::int64_t>(leading_number(text), 0, most));
}

void choose_start_time(RecurrenceForm& form, CalendarDate start) {
  const CalendarDate end = start + form.end_time - form.start_time;
  form.end_time = end - std::floor(end);
  form.start_time = start;
}

void choose_start_date(RecurrenceForm& form, CalendarDate start) {
  const Day fresh = whole_day(start);
  const Day end = whole_day(form.end_date) + (fresh - whole_day(form.start_date));
  form.end_date = to_calendar_date(form.end == SeriesEnd::none ? fresh : end);
  form.start_date = to_calendar_date(fresh);
}

void choose_year_month(RecurrenceForm& form, int row) {
  form.year_month = row;
  form.year_day = std::min(form.year_day, longest_month(row + 1));
}

std::optional<RecurrenceFault> recurrence_fault(const RecurrenceForm& form, Language language) {
  if (auto fault = kind_fault(form, language)) return fault;
  if (form.end == SeriesEnd::by_count && form.count < 1)
    return RecurrenceFault{load_string(StringId::box_least_count, language), kStepRange,
                           kControlCount};
  if (form.end != SeriesEnd::by_date) return std::nullopt;
  if (form.end_date < form.start_date)
    return RecurrenceFault{u"The defined start date must be before the end date!", kStepRange,
                           kControlRangeEnd};
  if (to_calendar_date(first_day(recurrence_pattern(form, {}))) > form.end_date)
    return RecurrenceFault{load_string(StringId::box_before_first, language), kStepRange,
                           kControlRangeEnd};
  return std::nullopt;
}

bool dump_pattern(Files& files, const RecurrencePattern& pattern) {
  const auto number = [&](TextView name, std::int32_t value) {
    return files.append_diagnostic_line(format(u"%s = %ld", Text(name), value));
  };
  const auto date = [&](TextView name, CalendarDate value) {
    return files.append_diagnostic_line(format(u"%s = %f", Text(name), value));
  };
  return number(u"longType", static_cast<std::int32_t>(pattern.type)) &&
         date(u"patternStart", pattern.pattern_start_date) &&
         date(u"patternEnd", pattern.pattern_end_date) &&
         number(u"bNoEndDate", pattern.no_end_date ? 1 : 0) &&
         number(u"longOccurrences", pattern.occurrences) &&
         date(u"startTime", pattern.start_time) && date(u"endTime", pattern.end_time) &&
         number(u"longDuration", pattern.duration) && number(u"longInterval", pattern.interval) &&
         number(u"longDayOfWeek", pattern.day_of_week_mask) &&
         number(u"longDayOfMonth", pattern.day_of_month) &&
         number(u"longInstance", pattern.instance) &&
         number(u"longMonthOfYear", pattern.month_of_year);
}

}  // namespace orvello
