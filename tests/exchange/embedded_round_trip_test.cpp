// The same round trip through the store that people have.
#include <filesystem>

#include "store/embedded/embedded_store.h"
#include "tests/exchange/exchange_fixture.h"

namespace orvello {
namespace {

using EmbeddedRoundTrip = ExchangeTest;

TEST_F(EmbeddedRoundTrip, NothingIsLostOnDisk) {
  const std::string path = folder + "round-trip.db";
  std::string first;
  for (int pass = 0; pass < 2; ++pass) {
    const auto disk = EmbeddedStore::open(path, clock);
    ASSERT_TRUE(disk) << disk.reason();
    const auto result =
        import_files({data_file("series.ics"), data_file("rules.ics")}, **disk, clock);
    ASSERT_TRUE(result.done) << result.failure;
    EXPECT_EQ(result.counts, pass == 0 ? (ImportCounts{5, 0, 0}) : (ImportCounts{0, 5, 0}));
    const auto text = export_calendar(**disk, {}, {}, clock);
    ASSERT_TRUE(text) << text.reason();
    for (const char* name : {"series.ics", "rules.ics"})
      EXPECT_EQ(missing(file_text(data_file(name)), *text), "") << name;
    if (pass == 0) first = *text;
    EXPECT_EQ(*text, first);
  }
}

}  // namespace
}  // namespace orvello
