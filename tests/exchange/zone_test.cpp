#include "exchange/date_values.h"
#include "tests/exchange/exchange_fixture.h"

namespace orvello {
namespace {

class ZoneImport : public ExchangeTest {
 protected:
  // Every event of a file at the moment that its X-UTC tells; `names`: in the zone that
  // its X-ZONE tells.
  void expect_moments(const std::string& file, bool names) {
    const std::string text = file_text(data_file(file));
    ParsedComponent calendar;
    ASSERT_TRUE(calendar.parse(text, 1));
    for (const Component& event : calendar.root().children) {
      if (!event.named("VEVENT")) continue;
      const std::string uid(event.find("UID")->value);
      const AppointmentRecord* record = store.of_uid(uid);
      ASSERT_TRUE(record) << uid;
      const auto zone = record->zone == "UTC" ? std::optional(Zone()) : *store.zone(record->zone);
      ASSERT_TRUE(zone) << uid << ": " << record->zone;
      EXPECT_EQ(zone->to_utc(record->start), parse_date(event.find("X-UTC")->value)->local) << uid;
      const Property* name = event.find("X-ZONE");
      if (name && names) {
        EXPECT_EQ(record->zone, name->value) << uid;
      }
    }
  }
};

TEST_F(ZoneImport, NamesInEveryWritingAndDefinitionsOfAnyQuality) {
  const auto result = import_files({data_file("zones.ics")}, store, clock);
  EXPECT_EQ(problems_of(result), "");
  expect_moments("zones.ics", true);
  // What goes out means the same to whoever reads it, also where this device's database is not.
  const std::string out = exported();
  EXPECT_EQ(missing(file_text(data_file("zones.ics")), out), "");
  store.now = {};
  clock.rules.clear();
  import_text(out);
  EXPECT_EQ(store.of_uid("shouted")->zone, "Europe/Berlin");
  expect_moments("zones.ics", false);
}

}  // namespace
}  // namespace orvello
