#include <gtest/gtest.h>

#include <ctime>

#include "calendar/rule_text.h"
#include "hosts/linux/system_clock.h"
#include "hosts/linux/zone_files.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

LocalSeconds at(const char* text) { return parse_moment(text).value(); }
UtcSeconds utc(const char* text) { return utc_at_offset(at(text), 0); }

TEST(SystemClock, RunsWithTheMachine) {
  const VariableGuard zone("TZ", "Asia/Kathmandu");
  const SystemClock clock;
  const UtcSeconds expected(25569 * kSecondsPerDay + std::time(nullptr));
  EXPECT_LE(std::abs(clock.utc_now() - expected), 2);
  CalendarDate date = 0;
  ASSERT_TRUE(SystemTimeToVariantTime(clock.local_time(), date));
  EXPECT_LE(std::abs(to_seconds(date) - local_at_offset(expected, 5 * 3600 + 45 * 60)), 2);
}

TEST(SystemClock, KnowsTheZonesOfTheSystemsDatabase) {
  // The library that converts the device's own times reads the same files.
  for (const char* name : {"Europe/Berlin", "America/New_York", "Australia/Lord_Howe",
                           "Africa/Casablanca", "America/Nuuk", "Pacific/Apia"}) {
    const VariableGuard device("TZ", name);
    const SystemClock clock;
    const auto zone = clock.known_zone(name);
    ASSERT_TRUE(zone) << name;
    for (LocalSeconds local = at("19050101T000000"); local < at("21500101T000000");
         local += 777777) {
      const UtcSeconds moment = utc_at_offset(local, 0);
      ASSERT_EQ(zone->from_utc(moment), clock.to_local(moment)) << name << " " << local.count();
      ASSERT_EQ(zone->to_utc(local), clock.to_utc(local)) << name << " " << local.count();
    }
  }
}

// A rule in the place of a name, without any file.
TEST(SystemClock, FollowsARuleOfTheVariable) {
  const VariableGuard zone("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
  const SystemClock clock;
  EXPECT_EQ(clock.to_utc(at("20260329T023000")), utc("20260329T013000"));
  EXPECT_EQ(clock.to_utc(at("20261025T023000")), utc("20261025T003000"));
}

TEST(SystemClock, TheVariableNamesTheDatabasesFolder) {
  const ScratchFolder folder;
  std::filesystem::create_directory(folder / "Europe");
  std::filesystem::copy_file("/usr/share/zoneinfo/Asia/Tokyo", folder / "Europe/Berlin");
  const auto zone = read_zone(zone_folders(folder.path().c_str()), "Europe/Berlin");
  EXPECT_EQ(zone->from_utc(utc("20260701T000000")), at("20260701T090000"));
  EXPECT_TRUE(read_zone(zone_folders(folder.path().c_str()), "Asia/Tokyo"));
}

TEST(ZoneName, ComesFromTheVariableOrTheLink) {
  const std::string link = "/usr/share/zoneinfo/Asia/Tokyo";
  EXPECT_EQ(zone_name_from(nullptr, link), "Asia/Tokyo");
  EXPECT_EQ(zone_name_from(nullptr, "../usr/share/zoneinfo/posix/Asia/Tokyo"), "Asia/Tokyo");
  EXPECT_EQ(zone_name_from(nullptr, ""), "");
  EXPECT_EQ(zone_name_from(nullptr, "/etc/mine"), "");
  EXPECT_EQ(zone_name_from("Europe/Berlin", link), "Europe/Berlin");
  EXPECT_EQ(zone_name_from(":America/Argentina/Buenos_Aires", link),
            "America/Argentina/Buenos_Aires");
  EXPECT_EQ(zone_name_from(":/usr/share/zoneinfo/Europe/Oslo", link), "Europe/Oslo");
  EXPECT_EQ(zone_name_from("Etc/GMT+3", link), "Etc/GMT+3");
  EXPECT_EQ(zone_name_from("", link), "UTC");
  for (const char* rule : {"CET-1CEST", "CET-1CEST,M3.5.0,M10.5.0/3", "<+0530>-5:30"})
    EXPECT_EQ(zone_name_from(rule, link), "") << rule;
}

}  // namespace
}  // namespace orvello
