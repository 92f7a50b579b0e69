// The same round trip through the store that people have.
#include <filesystem>

#include "store/embedded/embedded_store.h"
#include "tests/exchange/exchange_fixture.h"

namespace orvello {
namespace {

using EmbeddedRoundTrip = ExchangeTest;

TEST_F(EmbeddedRoundTrip, ANulCutsNoText) {
  const auto disk = EmbeddedStore::open(folder / "zero.db", clock);
  ASSERT_TRUE(disk) << disk.reason();
  AppointmentRecord record;
  record.fields.subject = record.fields.body = Text(u"a\0b", 3);
  record.residue = std::string("\nX-A:\0b", 7);
  const auto loaded = (*disk)->load((*disk)->put(record));
  ASSERT_TRUE(loaded && *loaded);
  const auto& read = *loaded;
  EXPECT_EQ(read->fields.subject, record.fields.subject);
  EXPECT_EQ(read->fields.body, record.fields.body);
  EXPECT_EQ(read->residue, record.residue);
}

// A known zone is looked up by its name at use; the store's copy is for a device without a
// database.
TEST_F(EmbeddedRoundTrip, AKnownZoneFollowsANewerDatabase) {
  const std::string path = folder / "renewed.db";
  const std::string text =
      calendar(event("UID:z\r\nDTSTART;TZID=Europe/Berlin:20260701T120000\r\n"));
  const auto shown = [&] {
    const auto disk = EmbeddedStore::open(path, clock);
    const auto oids = (*disk)->oids(day_of(2026, 7, 1), day_of(2026, 7, 1));
    const auto record = (*disk)->load(oids->size() == 1 ? oids->front() : 0);
    return *record ? to_seconds((*record)->fields.start) : LocalSeconds();
  };
  {
    const auto disk = EmbeddedStore::open(path, clock);
    ASSERT_TRUE(disk) << disk.reason();
    ASSERT_TRUE(import_files({file_of(text)}, open_input_file, **disk, clock).done);
  }
  EXPECT_EQ(shown(), at(2026, 7, 1, 12));  // both are two hours east in summer
  clock.zone_rules["Europe/Berlin"] = "CET-1CET-1,M3.5.0,M10.5.0";  // summer time was given up
  EXPECT_EQ(shown(), at(2026, 7, 1, 13));
  clock.zone_rules.clear();
  EXPECT_EQ(shown(), at(2026, 7, 1, 12));
}

}  // namespace
}  // namespace orvello
