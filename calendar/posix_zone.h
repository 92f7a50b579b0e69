// Rules of clock changes as POSIX writes them: "CET-1CEST,M3.5.0,M10.5.0/3".
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "calendar/zone.h"

namespace orvello {

// A change of the clock, in Coordinated Universal Time.
struct ZoneOnset {
  UtcSeconds at;
  int before = 0;  // seconds east of Greenwich
  int after = 0;
  friend bool operator==(const ZoneOnset&, const ZoneOnset&) = default;
};

struct PosixZone {
  // A day of each year: the n-th weekday of a month (5: the last), a day of the year from 1 that
  // never counts 29 February, or one from 0 that does.
  struct YearDay {
    enum class Kind { weekday_of_month, day_without_leap, day_with_leap } kind;
    int month = 0, week = 0, weekday = 0;  // weekday: 0 is Sunday
    int number = 0;
    int time = 2 * 3600;  // seconds behind that day's midnight, also negative or beyond the day
  };
  int standard = 0;  // seconds east of Greenwich
  struct Summer {
    int offset = 0;
    YearDay begin, end;
  };
  std::optional<Summer> summer;

  // Its two changes in a year, in order; none without summer time.
  std::vector<ZoneOnset> onsets_in(int year) const;
  // Both kinds of change for ever, from the first ones behind `after` on.
  std::vector<Observance> observances_after(UtcSeconds after) const;
};

// Nothing where it is not understood.
std::optional<PosixZone> parse_posix_zone(std::string_view text);

}  // namespace orvello
