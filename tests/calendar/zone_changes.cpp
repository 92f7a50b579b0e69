#include <gtest/gtest.h>

#include "calendar/rule_text.h"
#include "calendar/zone.h"

namespace orvello {
namespace {

LocalSeconds at(const char* text) { return parse_moment(text).value(); }
UtcSeconds utc(const char* text) { return utc_at_offset(at(text), 0); }

Observance observance(const char* start, int from, int to, const char* rule) {
  Observance one{at(start), from * 3600, to * 3600, std::nullopt, {}};
  if (*rule) one.rule = *parse_rule(rule);
  return one;
}

Zone berlin() {
  return Zone("Europe/Berlin",
              {observance("19810329T020000", 1, 2, "FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU"),
               observance("19961027T030000", 2, 1, "FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU")});
}

TEST(Zone, IsUtcUnlessTold) {
  EXPECT_EQ(Zone().to_utc(LocalSeconds(12345)), UtcSeconds(12345));
  EXPECT_EQ(Zone().from_utc(UtcSeconds(-12345)), LocalSeconds(-12345));
  EXPECT_EQ(Zone::parse(Zone().definition())->name(), "UTC");
}

TEST(Zone, ReadsSkippedAndDoubledTimes) {
  const Zone zone = berlin();
  const struct {
    const char *local, *utc, *shown;
  } kTimes[] = {
      {"20260329T015959", "20260329T005959", "20260329T015959"},
      {"20260329T020000", "20260329T010000", "20260329T030000"},  // skipped: shown an hour later
      {"20260329T023000", "20260329T013000", "20260329T033000"},
      {"20260329T030000", "20260329T010000", "20260329T030000"},
      {"20261025T015959", "20261024T235959", "20261025T015959"},
      {"20261025T020000", "20261025T000000", "20261025T020000"},  // twice: the first
      {"20261025T025959", "20261025T005959", "20261025T025959"},
      {"20261025T030000", "20261025T020000", "20261025T030000"},
      {"19700701T120000", "19700701T110000", "19700701T120000"},  // before the first change
      {"21990701T120000", "21990701T100000", "21990701T120000"},
  };
  for (const auto& one : kTimes) {
    EXPECT_EQ(zone.to_utc(at(one.local)), utc(one.utc)) << one.local;
    EXPECT_EQ(moment_text(zone.from_utc(utc(one.utc))), one.shown) << one.local;
  }
  EXPECT_EQ(zone.from_utc(utc("20261025T010000")), at("20261025T020000"));  // the second 2 o'clock
}

TEST(Zone, EndsARuleAtItsUtcUntil) {
  // Summer time for the last time in 2006: UNTIL is the onset itself, in UTC.
  const Zone zone("East", {observance("20000402T020000", -5, -4,
                                      "FREQ=YEARLY;BYMONTH=4;BYDAY=1SU;UNTIL=20060402T070000Z"),
                           observance("20001029T020000", -4, -5,
                                      "FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU;UNTIL=20061029T060000Z")});
  EXPECT_EQ(zone.to_utc(at("20060701T120000")), utc("20060701T160000"));
  EXPECT_EQ(zone.to_utc(at("20061201T120000")), utc("20061201T170000"));
  EXPECT_EQ(zone.to_utc(at("20070701T120000")), utc("20070701T170000"));
}

TEST(Zone, KeepsItsDefinition) {
  Zone zone = berlin();
  auto observances = zone.observances();
  observances[0].dates = {at("19800406T020000"), at("19810101T000000")};
  zone = Zone("(GMT+01:00) Köln | 100%\n", observances);
  const std::string line = zone.definition();
  for (char unit : line) EXPECT_TRUE(unit >= ' ' && unit < 127) << line;
  const auto again = Zone::parse(line);
  ASSERT_TRUE(again) << again.reason();
  EXPECT_EQ(again->name(), zone.name());
  EXPECT_EQ(again->observances(), zone.observances());
  EXPECT_EQ(again->to_utc(at("20260701T120000")), utc("20260701T100000"));
}

TEST(Zone, RefusesDamagedDefinitions) {
  const char* const kBad[] = {"",
                              "%4",
                              "Z|",
                              "Z|20260101T000000 3600 7200 -",
                              "Z|20260101T000000 3600 93601 - -",
                              "Z|20260101T000000 -2147483648 0 - -",
                              "Z|20261301T000000 0 0 - -",
                              "Z|20260101T000000 0 0 FREQ=NEVER -",
                              "Z|20260101T000000 0 0 - 2026"};
  for (const char* bad : kBad) EXPECT_FALSE(Zone::parse(bad)) << bad;
  EXPECT_TRUE(Zone::parse("Z|20260101T000000 3600 93600 - -"));
}

TEST(Zone, SurvivesHostileObservances) {
  const Zone wild("Wild", {observance("19700101T000000", 30, 1, ""),
                           observance("19700101T000000", 0, 1, "FREQ=SECONDLY"),
                           observance("19700102T000000", 1, 2, "FREQ=DAILY"),
                           observance("00010101T000000", 2, 1, "FREQ=DAILY;INTERVAL=2")});
  EXPECT_EQ(wild.observances().size(), 3u);  // the first is beyond any clock
  for (const char* text : {"00010101T000000", "19700102T003000", "20260701T120000"})
    EXPECT_LE(std::abs(wild.to_utc(at(text)) - utc(text)), 7200) << text;
}

}  // namespace
}  // namespace orvello
