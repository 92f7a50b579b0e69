#include "tests/win32/standin/standin_pattern.h"

#include <cmath>

namespace orvello::test {
namespace {

enum PatternMember {
  kType,
  kStartDate,
  kEndDate,
  kNoEnd,
  kOccurrences,
  kStartTime,
  kEndTime,
  kLength,
  kWeekdays,
  kMonthDay,
  kInterval,
  kInstance,
  kMonth,
  kExceptions,
  kGetOccurrence,
};
constexpr auto kAsked = StandinMember::both;
constexpr StandinMember kPatternMembers[] = {
    {L"RecurrenceType", kAsked, VT_I4},
    {L"PatternStartDate", kAsked, VT_DATE},
    {L"PatternEndDate", kAsked, VT_DATE},
    {L"NoEndDate", kAsked, VT_BOOL},
    {L"Occurrences", kAsked, VT_I4},
    {L"StartTime", kAsked, VT_DATE},
    {L"EndTime", kAsked, VT_DATE},
    {L"Duration", kAsked, VT_I4},
    {L"DayOfWeekMask", kAsked, VT_I4},
    {L"DayOfMonth", kAsked, VT_I4},
    {L"Interval", kAsked, VT_I4},
    {L"Instance", kAsked, VT_I4},
    {L"MonthOfYear", kAsked, VT_I4},
    {L"Exceptions", StandinMember::read},
    {L"GetOccurrence", StandinMember::method, VT_DISPATCH, {VT_DATE}},
};
constexpr StandinMember kExceptionsMembers[] = {
    {L"Count", StandinMember::read},
    {L"Item", StandinMember::method, VT_DISPATCH, {VT_I4}},
};
constexpr StandinMember kExceptionMembers[] = {
    {L"AppointmentItem", StandinMember::read},
    {L"OriginalDate", StandinMember::read},
    {L"Deleted", StandinMember::read},
};

bool is_type(long number) { return (number >= 0 && number <= 3) || number == 5 || number == 6; }

}  // namespace

StandinPattern::StandinPattern(StandinAppointment& item)
    : StandinObject("pattern", kPatternMembers), item_(&item) {}

HRESULT StandinPattern::get(int member, VARIANT& answer) {
  const RecurrencePattern* pattern = item_->pattern(true);
  if (!pattern) return E_FAIL;
  switch (member) {
    case kType:
      return give(answer, static_cast<std::int32_t>(pattern->type));
    case kStartDate:
      return give(answer, pattern->pattern_start_date);
    case kEndDate:
      return give(answer, pattern->no_end_date ? kNoDate : pattern->pattern_end_date);
    case kNoEnd:
      return give_flag(answer, pattern->no_end_date);
    case kOccurrences: {
      if (pattern->no_end_date || pattern->occurrences > 0)
        return give(answer, pattern->occurrences);
      std::vector<LocalSeconds> all;  // counted when the item was saved
      append_occurrences(*pattern, pattern_start(*pattern),
                         midnight_of(whole_day(pattern->pattern_end_date) + 1), all);
      return give(answer, static_cast<std::int32_t>(all.size()));
    }
    case kStartTime:
      return give(answer, pattern->start_time);
    case kEndTime:
      return give(answer, pattern->end_time);
    case kLength:
      return give(answer, pattern->duration);
    case kWeekdays:
      return give(answer, pattern->day_of_week_mask);
    case kMonthDay:
      return give(answer, pattern->day_of_month);
    case kInterval:
      return give(answer, pattern->interval);
    case kInstance:
      return give(answer, pattern->instance);
    case kMonth:
      return give(answer, pattern->month_of_year);
    case kExceptions: {
      const auto record = item_->record();
      if (!record) return E_FAIL;
      return give(answer, new StandinExceptions(record->oid, record->exceptions));
    }
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

HRESULT StandinPattern::put(int member, const VARIANT& value) {
  RecurrencePattern* pattern = item_->pattern(true);
  if (!pattern) return E_FAIL;
  const auto in_range = [&](int low, int high) { return value.lVal >= low && value.lVal <= high; };
  bool fits = true;
  switch (member) {
    case kType:
      fits = is_type(value.lVal);
      if (fits) pattern->type = static_cast<RecurrenceType>(value.lVal);
      break;
    case kStartDate:
      pattern->pattern_start_date = std::floor(value.date);
      break;
    case kEndDate:
      pattern->pattern_end_date = std::floor(value.date);
      pattern->occurrences = -1;
      break;
    case kNoEnd:
      pattern->no_end_date = value.boolVal != 0;
      if (pattern->no_end_date) pattern->occurrences = -1;
      break;
    case kOccurrences:  // not used while there is no end; a number that means none says nothing
      if (!pattern->no_end_date && value.lVal > 0) pattern->occurrences = value.lVal;
      break;
    case kStartTime:
      pattern->start_time = time_of_day(value.date);
      break;
    case kEndTime: {
      pattern->end_time = time_of_day(value.date);
      const auto seconds = to_seconds(pattern->end_time) - to_seconds(pattern->start_time);
      pattern->duration = static_cast<std::int32_t>(floor_mod(seconds, kSecondsPerDay) / 60);
      break;
    }
    case kLength:
      fits = in_range(0, 31 * 24 * 60);
      if (fits) pattern->duration = value.lVal;
      if (fits) pattern->end_time = time_of_day(pattern->start_time + value.lVal / 1440.0);
      break;
    case kWeekdays:
      fits = in_range(0, 127);
      if (fits) pattern->day_of_week_mask = value.lVal;
      break;
    case kMonthDay:
      fits = in_range(0, 31);
      if (fits) pattern->day_of_month = value.lVal;
      break;
    case kInterval:
      fits = in_range(0, 999);
      if (fits) pattern->interval = value.lVal;
      break;
    case kInstance:
      fits = in_range(0, 5);
      if (fits) pattern->instance = value.lVal;
      break;
    case kMonth:
      fits = in_range(0, 12);
      if (fits) pattern->month_of_year = value.lVal;
      break;
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
  if (!fits) return E_INVALIDARG;
  item_->pattern_was_changed();
  return S_OK;
}

HRESULT StandinPattern::call(int member, const VARIANT* arguments, VARIANT& answer) {
  if (member != kGetOccurrence) return DISP_E_MEMBERNOTFOUND;
  return occurrence(arguments[0].date, answer);
}

// A changed one is found where it stands now.
HRESULT StandinPattern::occurrence(double date, VARIANT& answer) {
  auto record = item_->record();
  if (!record) return E_FAIL;
  if (!record->recurring() || !std::isfinite(date) || date < 0 || date >= kNoDate)
    return E_INVALIDARG;
  for (AppointmentException& one : record->exceptions) {
    one.fields.start = to_calendar_date(one.start);
    one.fields.end = to_calendar_date(one.end);
  }
  const auto series = make_series(*record, server().time());
  if (!series) return E_FAIL;
  const LocalSeconds asked = to_seconds(date);
  const auto found = occurrence_at(*series, asked, server().time());
  if (!found || found->start != asked) return E_INVALIDARG;
  return give(answer,
              new StandinAppointment(
                  record->oid, StandinOccurrence{found->original_start, found->start, found->end}));
}

StandinExceptions::StandinExceptions(std::int32_t oid, std::vector<AppointmentException> exceptions)
    : StandinObject("exceptions", kExceptionsMembers),
      oid_(oid),
      exceptions_(std::move(exceptions)) {}

HRESULT StandinExceptions::get(int, VARIANT& answer) {
  return give(answer, static_cast<std::int32_t>(exceptions_.size()));
}

HRESULT StandinExceptions::call(int, const VARIANT* arguments, VARIANT& answer) {
  const long index = arguments[0].lVal;
  if (index < 1 || index > static_cast<long>(exceptions_.size())) return E_INVALIDARG;
  return give(answer, new StandinException(oid_, exceptions_[static_cast<std::size_t>(index - 1)]));
}

StandinException::StandinException(std::int32_t oid, const AppointmentException& exception)
    : StandinObject("exception", kExceptionMembers),
      oid_(oid),
      occurrence_{exception.original_start, exception.start, exception.end},
      deleted_(exception.deleted) {}

HRESULT StandinException::get(int member, VARIANT& answer) {
  if (member == 1) return give(answer, to_calendar_date(occurrence_.original));
  if (member == 2) return give_flag(answer, deleted_);
  if (!deleted_) return give(answer, new StandinAppointment(oid_, occurrence_));
  give(answer, static_cast<IDispatch*>(nullptr));
  return S_FALSE;
}

}  // namespace orvello::test
