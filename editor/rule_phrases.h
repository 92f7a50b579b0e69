// The pieces that a recurrence in words is made of, from a language's texts. What a language's
// grammar asks for beyond them is a class of its own.
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
  explicit RulePhrases(Language language) : language_(language) {}
  virtual ~RulePhrases() = default;
  Text every(Frequency frequency, int interval) const;  // the beginning
  Text on_weekdays(const std::vector<int>& weekdays) const;
  Text on_class(int kind) const;  // "on weekdays"
  virtual Text on_counted_days(const std::vector<CountedDay>& days) const;
  virtual Text on_month_days(const std::vector<int>& days) const;  // below 0 from the end
  virtual Text on_clipped_day(int day) const;  // or the last, of a shorter month
  Text if_weekday(const std::vector<int>& weekdays) const;
  Text on_date(int day, int month) const;
  // `of`: of counted days or days of a month; else in them.
  Text in_months(const std::vector<int>& months, bool of) const;
  virtual Text in_weeks(const std::vector<int>& weeks) const;
  virtual Text on_year_days(const std::vector<int>& days) const;
  Text only_some(const std::vector<int>& positions) const;
  Text at_times(const std::vector<Text>& times) const;
  Text until(const SystemTime& day) const;
  Text counting(StringId id, int count) const { return load_count(id, count, language_); }
  Text said(StringId id) const { return load_string(id, language_); }

 protected:
  // "the 15th", "the last", "the 2nd last"
  virtual Text counted(int number) const;
  Text joined(const std::vector<Text>& pieces, StringId last = StringId::rule_and) const;
  Text all_counted(const std::vector<int>& numbers) const;
  Text word(StringId list, int place) const;

 private:
  Text words(StringId list, const std::vector<int>& places, StringId last) const;
  Text numbered(StringId picture, int number) const;
  Language language_;
};

std::unique_ptr<RulePhrases> phrases_in(Language language);
std::unique_ptr<RulePhrases> russian_phrases();

}  // namespace orvello
