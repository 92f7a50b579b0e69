// All series of the file, ready for queries. They are few and every query needs most of them.
#pragma once

#include <algorithm>
#include <vector>

#include "store/series.h"

namespace orvello {

class SeriesCache {
 public:
  bool valid = false;
  std::vector<Series> series;
  SeriesScratch scratch;

  void forget() {
    valid = false;
    series.clear();
  }
  void erase(std::int32_t oid) {
    const auto found = find(oid);
    if (found != series.end()) series.erase(found);
  }
  void put(Series one) {
    const auto found = find(one.oid);
    if (found != series.end())
      *found = std::move(one);
    else
      series.push_back(std::move(one));
  }

 private:
  std::vector<Series>::iterator find(std::int32_t oid) {
    return std::find_if(series.begin(), series.end(),
                        [oid](const Series& one) { return one.oid == oid; });
  }
};

}  // namespace orvello
