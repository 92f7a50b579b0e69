#include "calendar/zone_file.h"

#include <gtest/gtest.h>

#include "calendar/posix_zone.h"
#include "calendar/rule_text.h"

namespace orvello {
namespace {

constexpr UtcSeconds kUnixEpoch{25569 * kSecondsPerDay};

UtcSeconds at(std::string_view text) { return utc_at_offset(parse_moment(text).value(), 0); }

std::string big_endian(std::int64_t value, int bytes) {
  std::string text;
  for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
    text += static_cast<char>(value >> shift & 0xFF);
  return text;
}

struct Change {
  const char* utc;
  int offset;
};

// A file of version 2: empty where old readers look, then the changes and the rule behind them.
std::string zone_bytes(int first_offset, const std::vector<Change>& changes,
                       const std::string& footer, int leap_seconds = 0) {
  const auto header = [](std::size_t times, std::size_t types, int leaps) {
    std::string text = "TZif2" + std::string(15, '\0');
    for (const std::size_t count : {std::size_t{0}, std::size_t{0}, static_cast<std::size_t>(leaps),
                                    times, types, std::size_t{4}})
      text += big_endian(static_cast<std::int64_t>(count), 4);
    return text;
  };
  const auto type = [](int offset) { return big_endian(offset, 4) + std::string(2, '\0'); };
  std::string text = header(0, 1, 0) + type(0) + std::string(4, '\0');
  text += header(changes.size(), changes.size() + 1, leap_seconds);
  for (const Change& each : changes) text += big_endian(at(each.utc) - kUnixEpoch, 8);
  for (std::size_t i = 1; i <= changes.size(); ++i) text += static_cast<char>(i);
  text += type(first_offset);
  for (const Change& each : changes) text += type(each.offset);
  return text + std::string(4 + 12 * leap_seconds, '\0') + "\n" + footer + "\n";
}

TEST(ZoneFile, ChangesAndTheRuleBehindThem) {
  // Summer time was given up for two years and came back, as the rule has it for ever.
  const auto bytes = zone_bytes(3208,
                                {{"18930401T000000", 3600},
                                 {"20200329T010000", 7200},
                                 {"20201025T010000", 3600},
                                 {"20230326T010000", 7200},
                                 {"20231029T010000", 3600},
                                 {"20240331T010000", 7200},
                                 {"20241027T010000", 3600}},
                                "CET-1CEST,M3.5.0,M10.5.0/3");
  const auto made = zone_from_file("Town", bytes);
  ASSERT_TRUE(made);
  const auto zone = Zone::parse(made->definition());  // as a store keeps it
  ASSERT_TRUE(zone);
  EXPECT_EQ(zone->observances(), made->observances());
  const std::pair<const char*, int> cases[] = {
      {"18930331T235959", 3208}, {"18930401T000000", 3600}, {"20200701T000000", 7200},
      {"20210701T000000", 3600}, {"20220701T000000", 3600}, {"20230701T000000", 7200},
      {"20231231T000000", 3600}, {"20260701T000000", 7200}, {"21500329T005959", 3600},
      {"21500329T010000", 7200}};
  for (const auto& [utc, offset] : cases)
    EXPECT_EQ(zone->from_utc(at(utc)), local_at_offset(at(utc), offset)) << utc;
  EXPECT_LE(zone->observances().size(), 5u);  // the years that the rule says are not listed as well
  EXPECT_EQ(
      zone_from_file("Etc/GMT+5", zone_bytes(-18000, {}, "<-05>5"))->from_utc(UtcSeconds(20000)),
      LocalSeconds(2000));
}

TEST(ZoneFile, AnythingElseIsRefused) {
  const std::string bytes = zone_bytes(0, {{"20200329T010000", 3600}}, "XXX-1");
  ASSERT_TRUE(zone_from_file("x", bytes));
  const std::size_t without_footer = bytes.size() - 7;
  for (std::size_t length = 0; length < without_footer; ++length)
    EXPECT_FALSE(zone_from_file("x", std::string_view(bytes).substr(0, length))) << length;
  EXPECT_FALSE(zone_from_file("x", "BEGIN:VTIMEZONE" + std::string(100, ' ')));
  EXPECT_FALSE(zone_from_file("right/x", zone_bytes(0, {}, "UTC0", 1)));
  for (std::size_t i = 0; i < bytes.size();
       ++i) {  // whatever it makes of damage, it makes it of these
    std::string damaged = bytes;
    damaged[i] = '\xFF';
    zone_from_file("x", damaged);
  }
  for (const char* name : {"", "/etc/passwd", "../zone", "Europe/", "a//b", "localtime",
                           "posix/UTC", "right/UTC", "zone.tab", "C:\\x"})
    EXPECT_FALSE(is_zone_name(name)) << name;
  for (const char* name : {"UTC", "Europe/Berlin", "America/Port-au-Prince", "Etc/GMT+5", "W-SU"})
    EXPECT_TRUE(is_zone_name(name)) << name;
}

TEST(PosixZone, RulesOfEveryKind) {
  struct Case {
    const char* rule;
    int year;
    const char* first;
    const char* second;
  };
  const Case cases[] = {
      {"CET-1CEST,M3.5.0,M10.5.0/3", 2026, "20260329T010000", "20261025T010000"},
      {"EST5EDT,M3.2.0,M11.1.0", 2026, "20260308T070000", "20261101T060000"},
      {"AEST-10AEDT,M10.1.0,M4.1.0/3", 2026, "20260404T160000", "20261003T160000"},
      {"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", 2026, "20260329T010000", "20261025T010000"},
      {"IST-2IDT,M3.4.4/26,M10.5.0", 2026, "20260327T000000", "20261024T230000"},
      {"IST-1GMT0,M10.5.0,M3.5.0/1", 2026, "20260329T010000", "20261025T010000"},
      {"<+1030>-10:30<+11>-11,M10.1.0,M4.1.0", 2026, "20260404T150000", "20261003T153000"},
      {"XXX3YYY,J60/2,J300/2", 2024, "20240301T050000", "20241027T040000"},
      {"XXX3YYY,60/2,J300/2", 2024, "20240301T050000", "20241027T040000"},
      {"XXX3YYY,M2.5.0/25,M10.5.6/24", 2026, "20260223T040000", "20261101T020000"},
  };
  for (const Case& one : cases) {
    const auto rule = parse_posix_zone(one.rule);
    ASSERT_TRUE(rule) << one.rule;
    const auto onsets = rule->onsets_in(one.year);
    ASSERT_EQ(onsets.size(), 2u);
    EXPECT_EQ(onsets[0].at, at(one.first)) << one.rule;
    EXPECT_EQ(onsets[1].at, at(one.second)) << one.rule;
    // For ever means the same, by a yearly rule or as a list.
    const Zone zone("x", rule->observances_after(at("20000601T000000")));
    for (int year = 2001; year < 2190; ++year)
      for (const ZoneOnset& onset : rule->onsets_in(year)) {
        ASSERT_EQ(zone.from_utc(onset.at), local_at_offset(onset.at, onset.after))
            << one.rule << " " << year;
        ASSERT_EQ(zone.from_utc(onset.at - 1), local_at_offset(onset.at - 1, onset.before))
            << one.rule << year;
      }
  }
  EXPECT_EQ(parse_posix_zone("<+0545>-5:45")->standard, 20700);
  for (const char* bad : {"", "UTC", "5", "EST5EDT", "EST5EDT,M3.2.0", "EST5EDT,M13.2.0,M11.1.0",
                          "EST5EDT,M3.2.0,M11.1.0,", "EST5EDT,M3.6.0,M11.1.0", "<X5", "X168Y,0,1"})
    EXPECT_FALSE(parse_posix_zone(bad)) << bad;
}

}  // namespace
}  // namespace orvello
