// The series that the queries so far had to look at, ready for the next: those alive in one span of
// days, and those without end that have begun.
#pragma once

#include <algorithm>
#include <limits>
#include <unordered_map>
#include <vector>

#include "store/series.h"

namespace orvello {

struct SeriesDays {
  Day from;
  Day to{-1};
  bool empty() const { return from > to; }
};

class SeriesCache {
 public:
  SeriesScratch scratch;

  const std::vector<Series>& all() const { return series_; }
  Series* find(std::int32_t oid) {
    const auto found = places_.find(oid);
    return found == places_.end() ? nullptr : &series_[found->second];
  }

  bool covers(const SeriesDays& days) const {
    return !days_.empty() && days.from >= days_.from && days.to <= days_.to;
  }
  // The days to read so that `asked` is covered: a first query reads no more than it needs, later
  // ones some weeks around them. What lies apart from them, or has become much, is forgotten.
  SeriesDays make_room(const SeriesDays& asked) {
    constexpr std::int32_t kAround = 62;
    constexpr std::size_t kMany = 50'000;
    if (days_.empty()) return asked;
    const SeriesDays wide{asked.from - kAround, asked.to + kAround};
    if (wide.from > days_.to + 1 || wide.to < days_.from - 1 || series_.size() > kMany) forget();
    return wide;
  }
  void cover(const SeriesDays& days) {
    days_ = days_.empty()
                ? days
                : SeriesDays{std::min(days_.from, days.from), std::max(days_.to, days.to)};
  }
  // Series without end that begin up to this day have been read.
  Day endless_to() const { return days_.empty() ? kNever : days_.to; }

  void forget() {
    days_ = {};
    series_.clear();
    places_.clear();
  }
  void erase(std::int32_t oid) {
    const auto found = places_.find(oid);
    if (found == places_.end()) return;
    const std::size_t place = found->second;
    places_.erase(found);
    if (place + 1 != series_.size()) {
      series_[place] = std::move(series_.back());
      places_[series_[place].oid] = place;
    }
    series_.pop_back();
  }
  void put(Series one) {
    const auto [found, added] = places_.try_emplace(one.oid, series_.size());
    if (added)
      series_.push_back(std::move(one));
    else
      series_[found->second] = std::move(one);
  }

 private:
  static constexpr Day kNever{std::numeric_limits<std::int32_t>::min()};
  SeriesDays days_;
  std::vector<Series> series_;
  std::unordered_map<std::int32_t, std::size_t> places_;  // by oid
};

}  // namespace orvello
