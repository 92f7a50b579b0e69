// What every clock must do.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "calendar/rule_text.h"
#include "ports/clock.h"

namespace orvello {

// A clock that stands still at that local time, on a device in that zone.
using ClockCase =
    std::pair<const char*,
              std::function<std::unique_ptr<Clock>(const char* zone, LocalSeconds standing)>>;
inline void PrintTo(const ClockCase& one, std::ostream* out) { *out << one.first; }

class ClockContract : public ::testing::TestWithParam<ClockCase> {
 protected:
  static LocalSeconds at(const char* text) { return parse_moment(text).value(); }
  static UtcSeconds utc(const char* text) { return utc_at_offset(at(text), 0); }
  std::unique_ptr<Clock> clock(const char* zone, const char* local = "20261121T093000") {
    return GetParam().second(zone, at(local));
  }
};

TEST_P(ClockContract, TellsOneMomentAsLocalTimeAndAsUtc) {
  const auto berlin = clock("Europe/Berlin");
  EXPECT_EQ(berlin->local_time(), (SystemTime{2026, 11, 6, 21, 9, 30, 0, 0}));
  EXPECT_EQ(berlin->utc_now(), utc("20261121T083000"));
  EXPECT_EQ(berlin->zone_name(), "Europe/Berlin");
  EXPECT_EQ(clock("America/New_York")->utc_now(), utc("20261121T143000"));
}

// A skipped local time moves forward, one that occurs twice is the first.
TEST_P(ClockContract, FollowsTheZonesChangesBothWays) {
  const struct {
    const char *zone, *local, *utc, *shown;
  } cases[] = {
      {"Europe/Berlin", "20260115T120000", "20260115T110000", nullptr},
      {"Europe/Berlin", "20260715T120000", "20260715T100000", nullptr},
      {"Europe/Berlin", "20260329T015900", "20260329T005900", nullptr},
      {"Europe/Berlin", "20260329T023000", "20260329T013000", "20260329T033000"},
      {"Europe/Berlin", "20260329T030000", "20260329T010000", nullptr},
      {"Europe/Berlin", "20261025T023000", "20261025T003000", nullptr},
      {"Europe/Berlin", "20261025T030000", "20261025T020000", nullptr},
      {"Europe/Berlin", "20990101T000000", "20981231T230000", nullptr},
      {"America/New_York", "20261101T013000", "20261101T053000", nullptr},
      {"America/New_York", "20260308T023000", "20260308T073000", "20260308T033000"},
  };
  for (const auto& one : cases) {
    const auto device = clock(one.zone);
    EXPECT_EQ(device->to_utc(at(one.local)), utc(one.utc)) << one.zone << one.local;
    EXPECT_EQ(device->to_local(utc(one.utc)), at(one.shown ? one.shown : one.local)) << one.local;
  }
}

TEST_P(ClockContract, KnowsOtherZonesAsTheyAreThere) {
  const auto device = clock("Europe/Berlin");
  const auto zone = device->known_zone("America/New_York");
  ASSERT_TRUE(zone);
  EXPECT_EQ(zone->name(), "America/New_York");
  EXPECT_EQ(zone->from_utc(utc("20260701T120000")), at("20260701T080000"));
  EXPECT_EQ(zone->from_utc(utc("20261231T120000")), at("20261231T070000"));
  for (const char* name : {"", "Town", "../zoneinfo/UTC", "zone.tab", "/usr/share/zoneinfo/UTC"})
    EXPECT_FALSE(device->known_zone(name)) << name;
}

}  // namespace orvello
