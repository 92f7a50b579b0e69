// What a store shows of every kind of pattern, against a calculation of its own: days one after the
// other from a known Monday, without any of the program's arithmetic.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <random>
#include <set>

#include "tests/contract/calendar_store_contract.h"

namespace orvello::test {
namespace {

constexpr int kMonday = 45292;  // 1 January 2024
constexpr int kCounted = 366 * 14;

struct CountedDay {
  int number, year, month, day, length;
  int weekday;  // 0 Sunday
};

std::vector<CountedDay> count_days() {
  constexpr std::array kLengths = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  std::vector<CountedDay> days;
  for (int number = 0, year = 2024, month = 1, day = 1; number < kCounted; ++number, ++day) {
    // Divisible by four, which for these years is all there is to it.
    const auto length_of = [&] {
      return kLengths[static_cast<std::size_t>(month - 1)] + (month == 2 && year % 4 == 0 ? 1 : 0);
    };
    if (day > length_of()) day = 1, ++month;
    if (month > 12) month = 1, ++year;
    days.push_back({kMonday + number, year, month, day, length_of(), (number + 1) % 7});
  }
  return days;
}

bool of_kind(const RecurrencePattern& pattern, const CountedDay& day) {
  return (pattern.day_of_week_mask >> day.weekday & 1) != 0;
}

class DayByDay {
 public:
  // The days of the pattern's occurrences, as far as days are counted here.
  std::vector<int> occurrences(const RecurrencePattern& pattern) const {
    std::vector<int> found;
    const CountedDay* first = nullptr;
    for (const CountedDay& day : days_) {
      if (day.number > kMonday + kCounted - 40) break;  // its month may not be whole
      if (day.number < pattern.pattern_start_date || !suits(pattern, day)) continue;
      if (!first) first = &day;
      const int interval = std::max(1, pattern.interval);
      if (periods(pattern, *first, day) % interval != 0) continue;
      if (!pattern.no_end_date && pattern.occurrences < 1 && day.number > pattern.pattern_end_date)
        break;
      found.push_back(day.number);
      if (!pattern.no_end_date && static_cast<int>(found.size()) == pattern.occurrences) break;
    }
    return found;
  }

 private:
  bool suits(const RecurrencePattern& pattern, const CountedDay& day) const {
    switch (pattern.type) {
      case RecurrenceType::daily:
        return true;
      case RecurrenceType::weekly:
        return of_kind(pattern, day);
      case RecurrenceType::monthly:
        return day.day == std::min(pattern.day_of_month, day.length);
      case RecurrenceType::yearly:
        return day.month == pattern.month_of_year &&
               day.day == std::min(pattern.day_of_month, day.length);
      case RecurrenceType::year_nth:
        if (day.month != pattern.month_of_year) return false;
        [[fallthrough]];
      case RecurrenceType::month_nth:
        return is_nth(pattern, day);
    }
    return false;
  }
  bool is_nth(const RecurrencePattern& pattern, const CountedDay& day) const {
    if (!of_kind(pattern, day)) return false;
    const auto at = static_cast<std::size_t>(day.number - kMonday);
    int before = 0, after = 0;
    for (std::size_t i = at + 1 - static_cast<std::size_t>(day.day); i < at; ++i)
      before += of_kind(pattern, days_[i]);
    const auto rest = static_cast<std::size_t>(day.length - day.day);
    for (std::size_t i = at + 1; i <= at + rest && i < days_.size(); ++i)
      after += of_kind(pattern, days_[i]);
    return pattern.instance == 5 ? after == 0 : before == pattern.instance - 1;
  }
  // Days, weeks from Monday, months or years from one day's to the other's.
  static int periods(const RecurrencePattern& pattern, const CountedDay& a, const CountedDay& b) {
    const auto week = [](const CountedDay& day) { return (day.number - kMonday) / 7; };
    switch (pattern.type) {
      case RecurrenceType::daily:
        return b.number - a.number;
      case RecurrenceType::weekly:
        return week(b) - week(a);
      case RecurrenceType::yearly:
      case RecurrenceType::year_nth:
        return b.year - a.year;
      default:
        return b.year * 12 + b.month - a.year * 12 - a.month;
    }
  }
  std::vector<CountedDay> days_ = count_days();
};

// 1 January, 29 February and 31 January 2024, 28 February 2025, a Sunday, the last day of 2025.
constexpr int kStarts[] = {45292, 45351, 45322, 45716, 45718, 46022};
constexpr int kKinds[] = {1, 2, 4, 8, 16, 32, 64, 127, 62, 65};

std::vector<RecurrencePattern> all_kinds() {
  std::vector<RecurrencePattern> all;
  const auto add = [&](RecurrenceType type, int interval, int mask, int day, int instance,
                       int month) {
    RecurrencePattern pattern;
    pattern.type = type;
    pattern.interval = interval;
    pattern.day_of_week_mask = mask;
    pattern.day_of_month = day;
    pattern.instance = instance;
    pattern.month_of_year = month;
    const auto turn = all.size();
    pattern.pattern_start_date = kStarts[turn % std::size(kStarts)];
    pattern.no_end_date = turn % 3 == 0;
    if (turn % 3 == 1) pattern.occurrences = 1 + static_cast<int>(turn % 17);
    if (turn % 3 == 2)
      pattern.pattern_end_date = pattern.pattern_start_date + 400 + static_cast<int>(turn % 900);
    all.push_back(pattern);
  };
  for (const int interval : {1, 2, 3, 7, 31}) add(RecurrenceType::daily, interval, 0, 0, 0, 0);
  for (const int interval : {0, 1, 2, 3, 5})
    for (const int mask : {1, 2, 62, 65, 127, 20, 96, 3})
      add(RecurrenceType::weekly, interval, mask, 0, 0, 0);
  for (const int interval : {1, 2, 3, 12})
    for (const int day : {1, 28, 29, 30, 31}) {
      add(RecurrenceType::monthly, interval, 0, day, 0, 0);
      for (const int month : {1, 2, 4, 12})
        add(RecurrenceType::yearly, interval % 5, 0, day, 0, month);
    }
  for (const int kind : kKinds)
    for (int instance = 1; instance <= 5; ++instance) {
      for (const int interval : {1, 2, 5})
        add(RecurrenceType::month_nth, interval, kind, 0, instance, 0);
      for (const int month : {1, 2, 11})
        add(RecurrenceType::year_nth, 1 + instance % 2, kind, 0, instance, month);
    }
  return all;
}

std::vector<RecurrencePattern> some_at_random() {
  std::mt19937 random(20260102);
  const auto pick = [&](int low, int high) {
    return low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1));
  };
  std::vector<RecurrencePattern> all(150);
  for (RecurrencePattern& pattern : all) {
    constexpr RecurrenceType kTypes[] = {RecurrenceType::daily,   RecurrenceType::weekly,
                                         RecurrenceType::monthly, RecurrenceType::month_nth,
                                         RecurrenceType::yearly,  RecurrenceType::year_nth};
    pattern.type = kTypes[pick(0, 5)];
    pattern.interval = pick(0, 6);
    pattern.day_of_week_mask = pick(1, 127);
    pattern.day_of_month = pick(1, 31);
    pattern.instance = pick(1, 5);
    pattern.month_of_year = pick(1, 12);
    pattern.pattern_start_date = kMonday + pick(0, 1500);
    pattern.no_end_date = pick(0, 2) == 0;
    if (pick(0, 1) == 0)
      pattern.occurrences = pick(1, 40);
    else
      pattern.pattern_end_date = pattern.pattern_start_date + pick(400, 1500);
  }
  return all;
}

// A series with what the calculation says of it, and the days on which it is to be seen.
struct CountedSeries {
  RecurrencePattern pattern;
  std::vector<int> days;
  std::set<int> shown;
};

std::vector<CountedSeries> counted_series() {
  const DayByDay plain;
  std::vector<CountedSeries> all;
  for (auto& patterns : {all_kinds(), some_at_random()})
    for (const RecurrencePattern& pattern : patterns) {
      CountedSeries& series = all.emplace_back();
      series.pattern = pattern;
      series.pattern.start_time = 0.375;
      series.pattern.end_time = 0.5;
      series.days = plain.occurrences(pattern);
      EXPECT_FALSE(series.days.empty()) << all.size();
      series.shown.insert(series.days.begin(), series.days.end());
    }
  return all;
}

// Deletes the first, the one in the middle and the last there is, or that is counted; moves the
// second to the day before the first, the one before the last to the day behind it.
bool change_ends(StorePattern& pattern, CountedSeries& series) {
  const auto& known = series.days;
  OccurrenceError error;
  const auto at = [&](std::size_t place) {
    series.shown.erase(known[place]);
    return pattern.occurrence(known[place] + 0.375, error);
  };
  const auto move = [&](std::size_t place, int day) {
    const auto one = at(place);
    if (!one) return false;
    AppointmentFields fields;
    one->read(fields);
    fields.start = day + 0.75;
    fields.end = day + 0.875;
    series.shown.insert(day);
    return one->write(fields, {AppointmentField::start, AppointmentField::end}).empty() &&
           one->save();
  };
  for (const std::size_t place : {std::size_t{0}, known.size() / 2, known.size() - 1})
    if (const auto one = at(place); !one || !one->remove()) return false;
  return move(1, known[0] - 1) && move(known.size() - 2, known.back() + 1);
}

// Which shows no difference.
bool divide(StorePattern& pattern, const CountedSeries& series) {
  OccurrenceError error;
  const auto rest = pattern.following(series.days[series.days.size() / 2] + 0.375, error);
  return rest && rest->save();
}

}  // namespace

TEST_P(CalendarStoreContract, EveryPatternShowsTheDaysThatAPlainCountFinds) {
  std::vector<CountedSeries> all = counted_series();
  ASSERT_TRUE(app_->all_or_nothing([&] {
    for (std::size_t i = 0; i < all.size(); ++i) {
      const auto oid = add_series(to_utf16(std::to_string(i)), all[i].pattern);
      if (all[i].days.size() < 6) continue;
      const auto item = app_->item_from_oid(oid);
      const auto pattern = item->pattern();
      const bool done = i % 2 == 0 ? divide(*pattern, all[i]) : change_ends(*pattern, all[i]);
      EXPECT_TRUE(done) << "series " << i;
      if (!done) return false;
    }
    return true;
  })) << store_->problem();
  // From the first day to the last one in spans of all lengths; each row once.
  const int last = kMonday + kCounted - 800;
  int days = 1, rows = 0;
  for (int from = kMonday - 5; from <= last && !HasFailure(); from += days, days = days * 2 + 1) {
    const int to = std::min(from + days - 1, last);
    auto items = app_->default_folder(kFolderCalendar)->items();
    items->set_include_recurrences(true);
    std::map<std::size_t, std::multiset<int>> found;
    ASSERT_TRUE(each_item(
        *items, format(u"[Start] >= <%d AND [Start] <= <%d", from, to), [&](const StoreItem& item) {
          const auto number = to_utf8(item.summary->subject);
          found[std::strtoul(number.c_str(), nullptr, 10)].insert(whole_day(item.start).number());
        }));
    for (std::size_t i = 0; i < all.size(); ++i) {
      const auto& shown = all[i].shown;
      const std::multiset<int> expected(shown.lower_bound(from), shown.upper_bound(to));
      EXPECT_EQ(found[i], expected)
          << "series " << i << ", type " << static_cast<int>(all[i].pattern.type) << ", from "
          << from << " to " << to;
      rows += static_cast<int>(expected.size());
    }
  }
  EXPECT_GT(rows, 50'000);
}

}  // namespace orvello::test
