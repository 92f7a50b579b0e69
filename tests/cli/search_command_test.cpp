#include "cli/search_command.h"

#include <gtest/gtest.h>

#include <sstream>

#include "cli/commands.h"
#include "hosts/headless/headless_host.h"
#include "tests/appointments.h"

namespace orvello {
namespace {

class SearchCommand : public ::testing::Test {
 protected:
  std::string found(const std::string& text, bool json = false) {
    CommandLine line;
    line.search_text = text;
    line.json = json;
    std::ostringstream out, err;
    code = run_search(line, store, clock, settings, out, err);
    EXPECT_EQ(err.str().empty(), code == kExitSuccess);
    return out.str() + err.str();
  }

  HeadlessClock clock;
  MemoryStore store{clock};
  SettingsRecord settings;
  int code = -1;
};

TEST_F(SearchCommand, PrintsByDateAndASeriesOnce) {
  settings.timeformat = 1;
  settings.locale = english_locale();
  store.put(one_hour({12, 24, 2031}, 18, u"Dîner\x1B[2J"));
  store.put(one_hour({2, 29, 2004}, 9, u"Dinner long ago"));
  AppointmentRecord series = one_hour({1, 4, 2024}, 19, u"Choir");
  series.fields.location = u"Diner";
  series.rules = "RRULE:FREQ=WEEKLY;COUNT=9";
  AppointmentException changed;
  changed.original_start = series.start + 7 * kSecondsPerDay;
  changed.start = changed.original_start + 3600;
  changed.end = changed.start + 60;
  changed.fields.subject = u"Choir, then a concert";
  series.exceptions.push_back(changed);
  store.put(series);
  EXPECT_EQ(found("DINER"),
            "Thursday, February 29, 2024\n  19:00-20:00      Choir [Diner] (repeats)\n\n"
            "Wednesday, December 24, 2031\n  18:00-19:00      Dîner [2J\n");
  EXPECT_EQ(found("choir concert"),
            "Thursday, January 11, 2024\n  20:00-20:01      Choir, then a concert (repeats)\n");
  const std::string json = found("choir", true);
  EXPECT_EQ(json.find("[\n  {\"oid\": 3, \"start\": \"2024-02-29T19:00:00\""), 0u) << json;
  EXPECT_EQ(json.find("\"oid\"", 9), std::string::npos) << json;
  EXPECT_EQ(code, kExitSuccess);
  EXPECT_EQ(found("none such"), "Nothing found\n");
  EXPECT_EQ(found("none such", true), "[]\n");
  EXPECT_EQ(code, kExitSuccess) << "as an empty day";
}

TEST_F(SearchCommand, WhatCannotBeReadIsNotNothing) {
  for (int i = 0; i < 8; ++i) store.put(one_hour({11, 6, 2026}, 9, u"One"));
  store.faults.reason = "The disk is gone.";
  for (int read = 1; read < 19; ++read) {
    store.faults.read = read;
    EXPECT_EQ(found("one"), "orvello: The disk is gone.\n") << read;
    EXPECT_EQ(code, kExitFailure);
  }
}

}  // namespace
}  // namespace orvello
