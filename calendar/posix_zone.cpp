#include "calendar/posix_zone.h"

#include <algorithm>
#include <string>

#include "calendar/rule_days.h"
#include "calendar/rule_text.h"

namespace orvello {
namespace {

constexpr int kLastListedYear = 2199;  // where a zone's own horizon is
constexpr int kLongestMonth[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  bool at_end() const { return rest_.empty(); }
  bool take(char c) {
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }
  // At most four digits.
  std::optional<int> number() {
    int value = 0;
    std::size_t i = 0;
    for (; i < rest_.size() && i < 4 && rest_[i] >= '0' && rest_[i] <= '9'; ++i)
      value = value * 10 + (rest_[i] - '0');
    if (i == 0) return std::nullopt;
    rest_.remove_prefix(i);
    return value;
  }
  bool name() {
    const bool quoted = take('<');
    std::size_t i = 0;
    while (i < rest_.size() && (quoted ? rest_[i] != '>' : is_letter(rest_[i]))) ++i;
    if (i == 0 || (quoted && i == rest_.size())) return false;
    rest_.remove_prefix(i + (quoted ? 1 : 0));
    return true;
  }
  // "[+-]hh[:mm[:ss]]" in seconds.
  std::optional<int> time() {
    const bool minus = take('-');
    if (!minus) take('+');
    int total = 0;
    for (int unit = 3600; unit > 0; unit /= 60) {
      if (unit < 3600 && !take(':')) break;
      const auto value = number();
      if (!value || *value > (unit == 3600 ? 167 : 59)) return std::nullopt;
      total += *value * unit;
    }
    return minus ? -total : total;
  }
  std::optional<PosixZone::YearDay> day() {
    PosixZone::YearDay day{PosixZone::YearDay::Kind::weekday_of_month};
    if (take('M')) {
      const auto month = number();
      if (!month || *month < 1 || *month > 12 || !take('.')) return std::nullopt;
      const auto week = number();
      if (!week || *week < 1 || *week > 5 || !take('.')) return std::nullopt;
      const auto weekday = number();
      if (!weekday || *weekday > 6) return std::nullopt;
      day.month = *month, day.week = *week, day.weekday = *weekday;
    } else {
      day.kind = take('J') ? PosixZone::YearDay::Kind::day_without_leap
                           : PosixZone::YearDay::Kind::day_with_leap;
      const auto number = this->number();
      const bool from_one = day.kind == PosixZone::YearDay::Kind::day_without_leap;
      if (!number || *number < (from_one ? 1 : 0) || *number > 365) return std::nullopt;
      day.number = *number;
    }
    if (!take('/')) return day;
    const auto time = this->time();
    if (!time) return std::nullopt;
    day.time = *time;
    return day;
  }

 private:
  static bool is_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
  std::string_view rest_;
};

LocalSeconds moment_of(const PosixZone::YearDay& day, int year) {
  Day found = day_of(year, 1, 1);
  if (day.kind == PosixZone::YearDay::Kind::weekday_of_month) {
    const Day first = day_of(year, day.month, 1);
    found = first + (day.weekday - weekday_of(first) + 7) % 7 + 7 * (day.week - 1);
    while (found >= first + month_length(year * 12 + day.month - 1)) found -= 7;
  } else if (day.kind == PosixZone::YearDay::Kind::day_without_leap) {
    found += day.number - 1 + (is_leap(year) && day.number >= 60 ? 1 : 0);
  } else {
    found += day.number;
  }
  return midnight_of(found) + day.time;
}

// The yearly rule for that day, empty where there is none: its time may lie on a day before or
// behind, and that day may be one of another month.
std::string yearly_rule(const PosixZone::YearDay& day) {
  if (day.kind != PosixZone::YearDay::Kind::weekday_of_month) return {};
  constexpr const char* kNames[] = {"SU", "MO", "TU", "WE", "TH", "FR", "SA"};
  constexpr int kDay = static_cast<int>(kSecondsPerDay);
  const int shift = day.time >= 0 ? day.time / kDay : -((kDay - 1 - day.time) / kDay);
  const std::string weekday = kNames[((day.weekday + shift) % 7 + 7) % 7];
  std::string rule = "FREQ=YEARLY;BYMONTH=" + std::to_string(day.month);
  if (shift == 0)
    return rule + ";BYDAY=" + (day.week == 5 ? "-1" : std::to_string(day.week)) + weekday;
  const int length = kLongestMonth[day.month - 1];
  if (day.month == 2 && day.week == 5) return {};
  const int first = (day.week == 5 ? length - 6 : day.week * 7 - 6) + shift;
  if (first < 1 || first + 6 > (day.month == 2 ? 28 : length)) return {};
  rule += ";BYDAY=" + weekday + ";BYMONTHDAY=";
  for (int i = 0; i < 7; ++i) rule += (i ? "," : "") + std::to_string(first + i);
  return rule;
}

}  // namespace

std::vector<ZoneOnset> PosixZone::onsets_in(int year) const {
  if (!summer) return {};
  std::vector<ZoneOnset> onsets{
      {utc_at_offset(moment_of(summer->begin, year), standard), standard, summer->offset},
      {utc_at_offset(moment_of(summer->end, year), summer->offset), summer->offset, standard}};
  if (onsets[1].at < onsets[0].at) std::swap(onsets[0], onsets[1]);
  return onsets;
}

std::vector<Observance> PosixZone::observances_after(UtcSeconds after) const {
  std::vector<Observance> observances;
  if (!summer) return observances;
  const int year = civil_of(day_of(after)).year;
  for (const bool begins : {true, false}) {
    const YearDay& day = begins ? summer->begin : summer->end;
    Observance observance;
    observance.offset_from = begins ? standard : summer->offset;
    observance.offset_to = begins ? summer->offset : standard;
    int first = year - 1;
    while (utc_at_offset(moment_of(day, first), observance.offset_from) <= after) ++first;
    observance.start = moment_of(day, first);
    const std::string rule = yearly_rule(day);
    if (!rule.empty()) {
      observance.rule = *parse_rule(rule);
    } else {
      for (int next = first + 1; next <= kLastListedYear; ++next)
        observance.dates.push_back(moment_of(day, next));
    }
    observances.push_back(std::move(observance));
  }
  return observances;
}

std::optional<PosixZone> parse_posix_zone(std::string_view text) {
  Reader reader(text);
  PosixZone zone;
  if (!reader.name()) return std::nullopt;
  const auto standard = reader.time();
  if (!standard) return std::nullopt;
  zone.standard = -*standard;  // here west of Greenwich counts as positive
  if (reader.at_end()) return zone;
  PosixZone::Summer summer{zone.standard + 3600, {}, {}};
  if (!reader.name()) return std::nullopt;
  if (!reader.take(',')) {
    const auto offset = reader.time();
    if (!offset || !reader.take(',')) return std::nullopt;
    summer.offset = -*offset;
  }
  const auto begin = reader.day();
  const auto end = reader.take(',') ? reader.day() : std::nullopt;
  if (!begin || !end || !reader.at_end()) return std::nullopt;
  summer.begin = *begin, summer.end = *end;
  zone.summer = summer;
  return zone;
}

}  // namespace orvello
