// RRULE, RDATE, EXRULE, EXDATE and alarms of an event.
#include <algorithm>

#include "calendar/instance_stream.h"
#include "calendar/rule_text.h"
#include "exchange/date_values.h"
#include "exchange/event_reader.h"
#include "exchange/rule_writer.h"

namespace orvello {
namespace {

// The value with its UTC end as a reading in the item's own zone, where all its other times are.
std::string localized(std::string_view value, Rule& rule, const Moment& start, const Clock& clock) {
  std::string text(trimmed(value));
  if (!rule.until || !rule.until_is_utc) return text;
  if (!start.is_date) {
    const UtcSeconds until = utc_at_offset(*rule.until, 0);
    rule.until = start.zone ? start.zone->from_utc(until) : clock.to_local(until);
  }
  rule.until_is_utc = false;
  return with_until(std::move(text), rule);
}

void add_deleted(AppointmentRecord& record, LocalSeconds start) {
  AppointmentException exception;
  exception.original_start = start;
  exception.deleted = true;
  record.exceptions.push_back(std::move(exception));
}

// One RDATE: its start, and an occurrence of its own length where it is a period.
std::optional<LocalSeconds> read_added(const Property& property, std::string_view value,
                                       EventContext& context, ReadEvent& read) {
  const std::size_t slash = value.find('/');
  auto moment = read_moment(property, value.substr(0, slash), context);
  if (!moment) return std::nullopt;
  AppointmentRecord& record = read.record;
  const LocalSeconds start = reading_at(*moment, read.start, context.clock);
  if (slash == std::string_view::npos || read.start.is_date) return start;
  LocalSeconds end = start + (record.end - record.start);
  const std::string_view until = value.substr(slash + 1);
  if (const auto duration = parse_duration(until))
    end = start + std::max<std::int64_t>(0, duration->total());
  else if (const auto last = read_moment(property, until, context))
    end = std::max(start, reading_at(*last, read.start, context.clock));
  if (end - start == record.end - record.start) return start;
  AppointmentException longer;
  longer.original_start = longer.start = start;
  longer.end = end;
  longer.zone = record.zone;
  longer.recipients = record.recipients;
  longer.fields = record.fields;
  Moment local = read.start;
  local.local = start;
  longer.fields.start = to_calendar_date(device_local(local, context.clock));
  local.local = end;
  longer.fields.end = to_calendar_date(device_local(local, context.clock));
  record.exceptions.push_back(std::move(longer));
  return start;
}

constexpr int kYearsLookedAt = 40;

struct RecurrenceLines {
  std::string text;
  int rules = 0, others = 0;
  Rule only_rule;
  std::string_view only_value;
  std::vector<LocalSeconds> dates;
};

// True for a rule without end whose parts seem never to meet, such as 30 February.
bool names_only_its_start(const Rule& rule, LocalSeconds start) {
  constexpr std::int64_t kYear = 366 * kSecondsPerDay;
  if (rule.count != 0 || rule.until || rule.frequency < Frequency::daily) return false;
  if (rule.by_month_day.empty() && rule.by_year_day.empty() && rule.by_week_no.empty() &&
      rule.by_set_pos.empty())
    return false;
  std::vector<LocalSeconds> found;
  RuleMembers(rule, start).append(start + 1, start + kYearsLookedAt * kYear, 1, found);
  return found.empty();
}

void read_rule(const Property& property, std::string_view kind, EventContext& context,
               ReadEvent& read, RecurrenceLines& lines) {
  // Blanks behind commas are wrong and common.
  std::string value(property.value);
  std::erase(value, ' ');
  if (value.empty() || value == ";") {
    read.plain = false;
    context.problems.add(property.line, std::string(kind) + " is empty; not used");
    return;
  }
  std::vector<std::string> oddities;
  Result<Rule> rule = parse_rule(value, &oddities);
  if (!rule) {
    read.plain = false;
    context.problems.add(property.line, "rule cannot be read (" + rule.reason() +
                                            "); kept, but only the start is shown");
    return;
  }
  if (!oddities.empty()) {
    std::string list;
    for (const std::string& one : oddities) list += (list.empty() ? "" : ", ") + one.substr(0, 40);
    context.problems.add(property.line, "rule is odd (" + list + "); used for the rest of it");
  }
  if (read.start.is_date) rule = by_whole_days(std::move(*rule));
  if (kind == "RRULE" && names_only_its_start(*rule, read.record.start))
    context.problems.add(
        property.line,
        "rule names no day in the " + std::to_string(kYearsLookedAt) + " years after the start");
  const std::string text = localized(value, *rule, read.start, context.clock);
  lines.text += (lines.text.empty() ? "" : "\n") + std::string(kind) + ":" + text;
  if (kind == "RRULE") {
    ++lines.rules;
    lines.only_rule = *rule;
    lines.only_value = property.value;
    if (!property.parameters.empty()) read.plain = false;
  } else {
    ++lines.others;
  }
}

void read_dates(const Property& property, EventContext& context, ReadEvent& read,
                RecurrenceLines& lines) {
  read.plain = false;
  const bool added = property.named("RDATE");
  for (const std::string_view value : split_values(property.value, ',')) {
    if (trimmed(value).empty()) continue;
    std::optional<LocalSeconds> start;
    if (added)
      start = read_added(property, trimmed(value), context, read);
    else if (const auto moment = read_moment(property, value, context))
      start = reading_at(*moment, read.start, context.clock);
    if (!start)
      context.problems.add(property.line, std::string(property.name) + " \"" +
                                              std::string(value.substr(0, 40)) +
                                              "\" is no date; not used");
    else if (added)
      lines.dates.push_back(*start);
    else
      add_deleted(read.record, *start);
  }
}

// Minutes before the start at which a trigger goes off; nothing when that is after it.
std::optional<std::int32_t> minutes_before(const Property& trigger, EventContext& context,
                                           const ReadEvent& read) {
  constexpr std::int64_t kMost = std::int64_t{366} * kSecondsPerDay;
  std::int64_t before = 0;
  if (const auto duration = parse_duration(trimmed(trigger.value))) {
    before = -duration->total();
    if (equal_ignoring_case(parameter(trigger, "RELATED").value_or(""), "END"))
      before -= read.record.end - read.record.start;
  } else if (const auto moment = read_moment(trigger, trigger.value, context)) {
    before = utc_of(read.start, context.clock) - utc_of(*moment, context.clock);
  } else {
    return std::nullopt;
  }
  if (before < 0 || before > kMost) return std::nullopt;
  return static_cast<std::int32_t>(before / 60);
}

// In order, one for each occurrence, which is the one told first.
void sort_exceptions(AppointmentRecord& record) {
  auto& list = record.exceptions;
  std::stable_sort(list.begin(), list.end(), [](const auto& a, const auto& b) {
    return a.original_start < b.original_start;
  });
  const auto same = [](const auto& a, const auto& b) {
    return a.original_start == b.original_start;
  };
  list.erase(std::unique(list.begin(), list.end(), same), list.end());
}

}  // namespace

void read_recurrence(const Component& event, EventContext& context, ReadEvent& read) {
  RecurrenceLines lines;
  for (const Property& property : event.properties) {
    if (property.named("RRULE"))
      read_rule(property, "RRULE", context, read, lines);
    else if (property.named("EXRULE"))
      read_rule(property, "EXRULE", context, read, lines);
    else if (property.named("RDATE") || property.named("EXDATE"))
      read_dates(property, context, read, lines);
  }
  AppointmentRecord& record = read.record;
  sort_exceptions(record);
  if (!lines.dates.empty()) {
    std::sort(lines.dates.begin(), lines.dates.end());
    std::string joined;
    for (const LocalSeconds date : lines.dates)
      joined += (joined.empty() ? "" : ",") + moment_text(date);
    lines.text += (lines.text.empty() ? "RDATE:" : "\nRDATE:") + joined;
    ++lines.others;
  }
  if (lines.rules == 1 && lines.others == 0) {
    record.pattern = pattern_from_rule(lines.only_rule, record.start, record.end - record.start);
    if (record.pattern) {
      if (read.plain && rule_value(*record.pattern, read.start) != lines.only_value)
        read.plain = false;
      return;
    }
  }
  if (!lines.text.empty()) read.plain = false;
  // Excluding rules and dates alone leave a single appointment.
  if (lines.rules > 0 || !lines.dates.empty()) record.rules = std::move(lines.text);
}

const Component* reminder_alarm(const Component& event, EventContext& context,
                                const ReadEvent& read, std::int32_t& minutes) {
  for (const Component& alarm : event.children) {
    if (!alarm.named("VALARM")) continue;
    const Property* action = alarm.find("ACTION");
    const Property* trigger = alarm.find("TRIGGER");
    if (!trigger || (action && equal_ignoring_case(trimmed(action->value), "EMAIL")) ||
        (action && equal_ignoring_case(trimmed(action->value), "NONE")))
      continue;
    if (const auto before = minutes_before(*trigger, context, read)) {
      minutes = *before;
      return &alarm;
    }
  }
  return nullptr;
}

}  // namespace orvello
