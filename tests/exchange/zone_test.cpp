#include "exchange/date_values.h"
#include "tests/exchange/exchange_fixture.h"

namespace orvello {
namespace {

class ZoneImport : public ExchangeTest {
 protected:
  // Every event of a file at the moment that its X-UTC tells; `names`: in the zone that
  // its X-ZONE tells.
  void expect_moments(const std::string& file, bool names) {
    const std::string text = content_of(data_file(file));
    ParsedComponent calendar;
    ASSERT_TRUE(calendar.parse(text, 1));
    for (const Component& event : calendar.root().children) {
      if (!event.named("VEVENT")) continue;
      const std::string uid(event.find("UID")->value);
      const AppointmentRecord* record = of_uid(uid);
      ASSERT_TRUE(record) << uid;
      const auto zone = record->zone == "UTC" ? std::optional(Zone()) : *store.zone(record->zone);
      ASSERT_TRUE(zone) << uid << ": " << record->zone;
      EXPECT_EQ(zone->to_utc(record->start),
                utc_at_offset(parse_date(event.find("X-UTC")->value)->local, 0))
          << uid;
      const Property* name = event.find("X-ZONE");
      if (name && names) {
        EXPECT_EQ(record->zone, name->value) << uid;
      }
    }
  }
};

TEST_F(ZoneImport, NamesInEveryWritingAndDefinitionsOfAnyQuality) {
  const auto result = import_files({data_file("zones.ics")}, open_input_file, store, clock);
  EXPECT_EQ(problems_of(result), "");
  expect_moments("zones.ics", true);
  // What goes out means the same to whoever reads it, also where this device's database is not.
  const std::string out = exported();
  EXPECT_EQ(missing(content_of(data_file("zones.ics")), out), "");
  store.put_back({});
  clock.zone_rules.clear();
  import_text(out);
  EXPECT_EQ(of_uid("shouted")->zone, "Europe/Berlin");
  expect_moments("zones.ics", false);
}

TEST_F(ZoneImport, TheOlderFormsZones) {
  const std::string summer =
      "TZ:-05\r\nDAYLIGHT:TRUE;-04;20260308T070000Z;20261101T060000Z;A;B\r\n";
  struct Case {
    std::string header;
    const char* start;
    LocalSeconds shown;  // two hours east of Greenwich
  };
  const Case cases[] = {
      {"", "DTSTART:20260701T120000", at(2026, 7, 1, 12)},
      {"", "DTSTART;TZID=America/New_York:20260701T120000", at(2026, 7, 1, 18)},
      {"TZ:+09\r\n", "DTSTART:20260701T120000", at(2026, 7, 1, 5)},
      {"TZ:-03:30\r\n", "DTSTART:20260701T120000", at(2026, 7, 1, 17, 30)},
      {"TZ:+09\r\n", "DTSTART:20260701T120000Z", at(2026, 7, 1, 14)},
      {"TZ:+09\r\n", "DTSTART;TZID=America/New_York:20260701T120000", at(2026, 7, 1, 18)},
      {"TZ:+09\r\n", "DTSTART:20260701", at(2026, 7, 1)},
      {"TZ:+02\r\n", "DTSTART:20260701T120000", at(2026, 7, 1, 12)},  // the device's own
      {"TZ:America/New_York\r\n", "DTSTART:20260701T120000", at(2026, 7, 1, 18)},
      {summer, "DTSTART:20260115T120000", at(2026, 1, 15, 19)},
      {summer, "DTSTART:20260307T120000", at(2026, 3, 7, 19)},
      {summer, "DTSTART:20260308T120000", at(2026, 3, 8, 18)},
      {summer, "DTSTART:20190701T120000", at(2019, 7, 1, 18)},
      {summer, "DTSTART:20311101T120000", at(2031, 11, 1, 18)},
      {summer, "DTSTART:20311102T120000", at(2031, 11, 2, 19)},
  };
  for (const Case& one : cases) {
    const std::string text = "BEGIN:VCALENDAR\r\nVERSION:1.0\r\n" + one.header +
                             "BEGIN:VEVENT\r\nUID:o\r\n" + one.start +
                             "\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
    store.put_back({});
    EXPECT_EQ(problems_of(import_text(text)), "") << text;
    ASSERT_TRUE(of_uid("o")) << text;
    EXPECT_EQ(to_seconds(of_uid("o")->fields.start), one.shown) << text;
    const std::string out = exported();
    store.put_back({});
    import_text(out);
    EXPECT_EQ(to_seconds(of_uid("o")->fields.start), one.shown) << out;
  }
}

// Each of these cost minutes or gigabytes once; here they only have to end.
TEST_F(ZoneImport, NamesAndDefinitionsWithoutMeasure) {
  std::string many;
  for (int i = 0; i < 300; ++i) {
    const std::string offset = "+0" + std::to_string(100 + i % 60) + "\r\n";
    many +=
        calendar("BEGIN:VTIMEZONE\r\nTZID:Here\r\nBEGIN:STANDARD\r\nDTSTART:" +
                 std::to_string(1970 + i % 50) + "0101T000000\r\nTZOFFSETFROM:" + offset +
                 "TZOFFSETTO:" + offset + "END:STANDARD\r\nEND:VTIMEZONE\r\n" +
                 event("UID:" + std::to_string(i) + "\r\nDTSTART;TZID=Here:20260701T120000\r\n"));
  }
  import_text(many);
  EXPECT_EQ(to_seconds(of_uid("59")->fields.start), at(2026, 7, 1, 12, 1));
  EXPECT_EQ(to_seconds(of_uid("299")->fields.start), at(2026, 7, 1, 12, 1));
  EXPECT_EQ(store.contents().zones.size(), 300u);
  const std::string slashes(100000, '/');
  import_text(calendar(
      event("UID:slashes\r\nDTSTART;TZID=" + slashes + "Europe/Berlin:20260701T120000\r\n")));
  EXPECT_EQ(of_uid("slashes")->zone, "Europe/Berlin");
}

}  // namespace
}  // namespace orvello
