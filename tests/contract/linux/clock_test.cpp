#include <gtest/gtest.h>

#include <stdlib.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>

#include "hosts/linux/system_clock.h"
#include "hosts/linux/zone_files.h"

namespace orvello {
namespace {

class ZoneGuard {
 public:
  explicit ZoneGuard(const char* zone) {
    if (const char* old = std::getenv("TZ")) old_ = old;
    ::setenv("TZ", zone, 1);
    ::tzset();
  }
  ~ZoneGuard() {
    if (old_)
      ::setenv("TZ", old_->c_str(), 1);
    else
      ::unsetenv("TZ");
    ::tzset();
  }

 private:
  std::optional<std::string> old_;
};

LocalSeconds at(const char* text) { return parse_local_time(text).value(); }
UtcSeconds utc(const char* text) { return utc_at_offset(at(text), 0); }

TEST(SystemClock, FollowsTheZonesChangesBothWays) {
  const ZoneGuard zone("Europe/Berlin");
  const SystemClock clock;
  const std::pair<const char*, const char*> cases[] = {
      {"2026-01-15T12:00", "2026-01-15T11:00"}, {"2026-07-15T12:00", "2026-07-15T10:00"},
      {"2026-03-29T01:59", "2026-03-29T00:59"}, {"2026-03-29T03:00", "2026-03-29T01:00"},
      {"1960-01-01T00:00", "1959-12-31T23:00"}, {"2099-01-01T00:00", "2098-12-31T23:00"}};
  for (const auto& [local, there] : cases) {
    EXPECT_EQ(clock.to_utc(at(local)), utc(there)) << local;
    EXPECT_EQ(clock.to_local(utc(there)), at(local)) << local;
  }
}

TEST(SystemClock, ASkippedTimeIsReadAsBeforeTheGapAndADoubleOneIsTheFirst) {
  for (const char* name : {"Europe/Berlin", "CET-1CEST,M3.5.0,M10.5.0/3"}) {
    const ZoneGuard zone(name);
    const SystemClock clock;
    EXPECT_EQ(clock.to_utc(at("2026-03-29T02:30")), utc("2026-03-29T01:30"));
    EXPECT_EQ(clock.to_local(utc("2026-03-29T01:30")), at("2026-03-29T03:30"));
    EXPECT_EQ(clock.to_utc(at("2026-10-25T02:30")), utc("2026-10-25T00:30"));
  }
  const ZoneGuard west("America/New_York");
  EXPECT_EQ(SystemClock().to_utc(at("2026-11-01T01:30")), utc("2026-11-01T05:30"));
  EXPECT_EQ(SystemClock().to_utc(at("2026-03-08T02:30")), utc("2026-03-08T07:30"));
}

TEST(SystemClock, StandsStillWhereItWasSet) {
  const ZoneGuard zone("Europe/Moscow");
  const SystemClock clock(at("2026-11-21T09:30"));
  EXPECT_EQ(clock.local_time(), (SystemTime{2026, 11, 6, 21, 9, 30, 0, 0}));
  EXPECT_EQ(clock.utc_now(), utc("2026-11-21T06:30"));
  EXPECT_EQ(clock.zone_name(), "Europe/Moscow");
}

TEST(SystemClock, RunsWithTheMachine) {
  const ZoneGuard zone("Asia/Kathmandu");
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
    const ZoneGuard device(name);
    const SystemClock clock;
    const auto zone = clock.known_zone(name);
    ASSERT_TRUE(zone) << name;
    for (LocalSeconds local = at("1905-01-01T00:00"); local < at("2150-01-01T00:00");
         local += 777777) {
      const UtcSeconds utc = utc_at_offset(local, 0);
      ASSERT_EQ(zone->from_utc(utc), clock.to_local(utc)) << name << " " << local.count();
      ASSERT_EQ(zone->to_utc(local), clock.to_utc(local)) << name << " " << local.count();
    }
  }
  for (const char* name : {"", "Town", "../zoneinfo/UTC", "zone.tab", "/usr/share/zoneinfo/UTC"})
    EXPECT_FALSE(SystemClock().known_zone(name)) << name;
}

TEST(SystemClock, TheVariableNamesTheDatabasesFolder) {
  namespace fs = std::filesystem;
  std::string folder = testing::TempDir() + "orvello-zones-XXXXXX";
  ASSERT_TRUE(::mkdtemp(folder.data()));
  fs::create_directories(folder + "/Europe");
  fs::copy_file("/usr/share/zoneinfo/Asia/Tokyo", folder + "/Europe/Berlin");
  const auto zone = read_zone(zone_folders(folder.c_str()), "Europe/Berlin");
  const auto other = read_zone(zone_folders(folder.c_str()), "Asia/Tokyo");
  fs::remove_all(folder);
  EXPECT_EQ(zone->from_utc(utc("2026-07-01T00:00")), at("2026-07-01T09:00"));
  EXPECT_TRUE(other);
}

TEST(SystemClock, TimesThatDoNotExistAreRefused) {
  EXPECT_EQ(at("2026-11-21T09:30:15") - at("2026-11-21T09:30"), 15);
  EXPECT_EQ(day_of(at("2024-02-29T00:00")), day_number(2024, 2, 29));
  for (const char* text :
       {"", "2026-11-21", "2026-02-29T10:00", "2026-13-01T10:00", "2026-11-21T24:00",
        "2026-11-21T10:60", "2026-11-21T10:00:60", "2026-11-21 10:00", "2026-1-021T10:00",
        "2026-11-21T+9:30", "2026-11-21T09:30Z", "0000-00-00T00:00"})
    EXPECT_FALSE(parse_local_time(text)) << text;
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
