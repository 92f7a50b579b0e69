#include "store/pim/pim_series.h"

#include <algorithm>
#include <cmath>

namespace orvello {
namespace {

constexpr std::int32_t kDayMinutes = 24 * 60;

constexpr struct {
  PimName name;
  std::int32_t RecurrencePattern::*member;
} kDayNumbers[] = {{PimName::day_of_week_mask, &RecurrencePattern::day_of_week_mask},
                   {PimName::day_of_month, &RecurrencePattern::day_of_month},
                   {PimName::instance, &RecurrencePattern::instance},
                   {PimName::month_of_year, &RecurrencePattern::month_of_year}};

const AppointmentException* exception_of(const std::vector<AppointmentException>& list,
                                         LocalSeconds original_start) {
  const auto found = std::find_if(list.begin(), list.end(), [&](const auto& one) {
    return one.original_start == original_start;
  });
  return found == list.end() ? nullptr : &*found;
}

bool read_exception(const PimObject& from, std::int64_t time_of_day, AppointmentFieldSet wanted,
                    const PimForm& form, AppointmentException& exception) {
  const auto deleted = from.flag(PimName::deleted);
  const auto original = from.moment(PimName::original_date);
  if (!deleted || !original || !std::isfinite(*original)) return false;
  exception.deleted = *deleted;
  exception.original_start = midnight_of(whole_day(*original)) + time_of_day;
  if (*deleted) return true;
  const auto item = from.part(PimName::appointment_item, PimKind::appointment);
  auto recipients = item && *item ? read_recipients(*item) : std::nullopt;
  if (!recipients || !read_fields(*item, wanted, form, exception.fields)) return false;
  exception.recipients = std::move(*recipients);
  exception.start = to_seconds(exception.fields.start);
  exception.end = to_seconds(exception.fields.end);
  return true;
}

// Whether patterns of that type say something by it.
bool says(RecurrenceType type, PimName name) {
  const bool nth = type == RecurrenceType::month_nth || type == RecurrenceType::year_nth;
  const bool of_year = type == RecurrenceType::yearly || type == RecurrenceType::year_nth;
  switch (name) {
    case PimName::day_of_week_mask:
      return nth || type == RecurrenceType::weekly;
    case PimName::day_of_month:
      return type == RecurrenceType::monthly || type == RecurrenceType::yearly;
    case PimName::instance:
      return nth;
    case PimName::month_of_year:
      return of_year;
    default:
      return true;
  }
}

bool same_change(const AppointmentException& a, const AppointmentException& b) {
  return a.deleted == b.deleted &&
         (a.deleted || (timed_fields(a) == timed_fields(b) && a.recipients == b.recipients));
}

// An exception as it would be without a change.
AppointmentException unchanged(const AppointmentRecord& series, LocalSeconds original_start) {
  AppointmentException plain;
  plain.original_start = plain.start = original_start;
  plain.end = original_start + (series.end - series.start);
  plain.fields = series.fields;
  plain.recipients = series.recipients;
  return plain;
}

bool write_exception(const PimObject& pattern, const AppointmentException* now,
                     const AppointmentException& wanted, const AppointmentRecord& series,
                     const PimForm& form) {
  const LocalSeconds at = now ? now->start : wanted.original_start;
  const auto occurrence = pattern.made_by(PimName::get_occurrence, PimKind::appointment,
                                          PimValue::moment(to_calendar_date(at)));
  if (!occurrence || !*occurrence) return false;
  if (wanted.deleted) return occurrence->call(PimName::remove);
  const AppointmentException before = now ? *now : unchanged(series, wanted.original_start);
  auto named = differing_fields(timed_fields(before), timed_fields(wanted));
  // Something must be put for an exception to be made, and a length belongs to both ends.
  named.add(AppointmentField::subject);
  if (named.has(AppointmentField::start) || named.has(AppointmentField::all_day))
    named.add({AppointmentField::start, AppointmentField::end});
  return write_fields(*occurrence, timed_fields(wanted), named, form) &&
         (wanted.recipients == before.recipients ||
          write_recipients(*occurrence, wanted.recipients)) &&
         occurrence->call(PimName::save);
}

}  // namespace

std::optional<RecurrencePattern> read_pattern(const PimObject& pattern) {
  RecurrencePattern read;
  bool whole = true;
  const auto number = [&](PimName name, std::int32_t& value) {
    const auto told = whole ? pattern.number(name) : std::nullopt;
    whole = told.has_value();
    if (told) value = *told;
  };
  const auto moment = [&](PimName name, CalendarDate& value) {
    const auto told = whole ? pattern.moment(name) : std::nullopt;
    whole = told && std::isfinite(*told);
    if (told) value = *told;
  };
  auto type = static_cast<std::int32_t>(read.type);
  number(PimName::recurrence_type, type);
  moment(PimName::pattern_start_date, read.pattern_start_date);
  moment(PimName::pattern_end_date, read.pattern_end_date);
  const auto endless = whole ? pattern.flag(PimName::no_end_date) : std::nullopt;
  whole = endless.has_value();
  number(PimName::occurrences, read.occurrences);
  moment(PimName::start_time, read.start_time);
  moment(PimName::end_time, read.end_time);
  number(PimName::interval, read.interval);
  number(PimName::duration, read.duration);
  if (!whole || type < 0 || type > 6 || type == 4) return std::nullopt;
  read.type = static_cast<RecurrenceType>(type);
  for (const auto& [name, member] : kDayNumbers)
    if (says(read.type, name)) number(name, read.*member);
  if (!whole) return std::nullopt;
  read.no_end_date = *endless;
  read.pattern_start_date = to_calendar_date(whole_day(read.pattern_start_date));
  read.start_time = time_of_day(read.start_time);
  read.end_time = time_of_day(read.end_time);
  if (read.no_end_date) {
    read.pattern_end_date = kNoDate;
    read.occurrences = -1;
  }
  return read;
}

bool write_pattern(const PimObject& pattern, const RecurrencePattern& fields, bool all_day,
                   const PimForm& form) {
  const auto number = [&](PimName name, std::int32_t value) {
    return pattern.put(name, PimValue::number(value));
  };
  const auto moment = [&](PimName name, CalendarDate value) {
    return pattern.put(name, PimValue::moment(value));
  };
  const bool next_midnight = all_day && form.all_day_end == AllDayEnd::next_midnight;
  const bool counted = !fields.no_end_date && fields.occurrences > 0;
  if (!number(PimName::recurrence_type, static_cast<std::int32_t>(fields.type)) ||
      !moment(PimName::pattern_start_date, fields.pattern_start_date))
    return false;
  // The end counts once there is one, which a new pattern's default says there is not: before that
  // the platform may take it or not.
  moment(PimName::pattern_end_date, fields.pattern_end_date);
  if (!pattern.put(PimName::no_end_date, PimValue::flag(fields.no_end_date))) return false;
  if (counted && !number(PimName::occurrences, fields.occurrences)) return false;
  if (!fields.no_end_date && !counted &&
      !moment(PimName::pattern_end_date, fields.pattern_end_date))
    return false;
  if (!moment(PimName::start_time, fields.start_time) ||
      !moment(PimName::end_time, next_midnight ? 0 : fields.end_time))
    return false;
  const std::int32_t duration = fields.duration + (next_midnight ? 1 : 0);
  if ((next_midnight || duration >= kDayMinutes) && !number(PimName::duration, duration))
    return false;
  if (!number(PimName::interval, std::max(fields.interval, 1))) return false;
  // What the type leaves alone is put all the same, whether the platform takes it or not.
  return std::all_of(std::begin(kDayNumbers), std::end(kDayNumbers), [&](const auto& day) {
    return number(day.name, fields.*day.member) || !says(fields.type, day.name);
  });
}

std::optional<std::vector<AppointmentException>> read_exceptions(const PimObject& pattern,
                                                                 std::int64_t time_of_day,
                                                                 AppointmentFieldSet wanted,
                                                                 const PimForm& form) {
  std::vector<AppointmentException> list;
  const auto all = pattern.part(PimName::exceptions, PimKind::exceptions);
  if (!all) return std::nullopt;
  const bool whole = !*all || each_part(*all, PimKind::exception, [&](const PimObject& one) {
    return read_exception(one, time_of_day, wanted, form, list.emplace_back());
  });
  return whole ? std::optional(std::move(list)) : std::nullopt;
}

bool can_follow_exceptions(const std::vector<AppointmentException>& now,
                           const std::vector<AppointmentException>& wanted) {
  return std::all_of(now.begin(), now.end(), [&](const AppointmentException& one) {
    const AppointmentException* then = exception_of(wanted, one.original_start);
    return then && (!one.deleted || then->deleted);
  });
}

bool write_exceptions(const PimObject& item, const std::vector<AppointmentException>& now,
                      const AppointmentRecord& record, const PimForm& form) {
  std::optional<PimObject> pattern;
  for (const AppointmentException& one : record.exceptions) {
    const AppointmentException* before = exception_of(now, one.original_start);
    if (before && same_change(*before, one)) continue;
    if (!pattern) pattern = item.made_by(PimName::get_recurrence_pattern, PimKind::pattern);
    if (!pattern || !*pattern || !write_exception(*pattern, before, one, record, form))
      return false;
  }
  return true;
}

}  // namespace orvello
