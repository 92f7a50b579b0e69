// The pieces that a recurrence in words is made of, in a language. Each but the first begins with
// the blank or comma that parts it from the one before.
#pragma once

#include <memory>
#include <vector>

#include "calendar/rule.h"
#include "resources/strings.h"

namespace orvello {

// The ordinal-th day of a kind: 0-6 Sunday to Saturday, then the classes.
inline constexpr int kNamedWeekday = 7, kNamedWeekendDay = 8, kNamedAnyDay = 9;
struct CountedDay {
  int ordinal = 0;  // from 1; from the end below 0
  int kind = 0;
};

class RulePhrases {
 public:
  virtual ~RulePhrases() = default;
  virtual Text every(Frequency frequency, int interval) const = 0;  // the beginning
  virtual Text on_weekdays(const std::vector<int>& weekdays) const = 0;
  virtual Text on_class(int kind) const = 0;  // "on weekdays"
  virtual Text on_counted_days(const std::vector<CountedDay>& days) const = 0;
  virtual Text on_month_days(const std::vector<int>& days) const = 0;  // below 0 from the end
  virtual Text on_clipped_day(int day) const = 0;  // or the last, of a shorter month
  virtual Text if_weekday(const std::vector<int>& weekdays) const = 0;
  virtual Text on_date(int day, int month) const = 0;
  virtual Text of_the_year() const = 0;
  // `of`: of counted days or days of a month; else in them.
  virtual Text in_months(const std::vector<int>& months, bool of) const = 0;
  virtual Text in_weeks(const std::vector<int>& weeks) const = 0;
  virtual Text on_year_days(const std::vector<int>& days) const = 0;
  virtual Text only_some(const std::vector<int>& positions) const = 0;
  virtual Text at_times(const std::vector<Text>& times) const = 0;
  virtual Text at_many_times() const = 0;
  virtual Text so_often(int count) const = 0;
  virtual Text until(const SystemTime& day) const = 0;
  virtual Text more_days(int count, bool alone) const = 0;
  virtual Text except_days(int count) const = 0;
  virtual Text except_rule(TextView words) const = 0;
  virtual Text rule_of_its_own() const = 0;
  virtual TextView conjunction() const = 0;  // with its blanks

  // "a, b and c"
  Text joined(const std::vector<Text>& pieces) const;
};

std::unique_ptr<RulePhrases> english_phrases();
std::unique_ptr<RulePhrases> russian_phrases();

}  // namespace orvello
