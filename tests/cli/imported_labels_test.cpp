#include "cli/imported_labels.h"

#include "hosts/headless/headless_ports.h"
#include "hosts/headless/memory_store.h"
#include "tests/appointments.h"

namespace orvello {
namespace {

TEST(ImportedLabels, AreThoseThatWereNotInUseBefore) {
  HeadlessClock clock;
  MemoryStore store(clock);
  const auto put = [&](TextView categories) {
    AppointmentRecord record = one_hour({11, 2, 2026}, 9, u"x");
    record.fields.categories = categories;
    EXPECT_NE(store.put(record), 0);
  };
  put(u"Old,Work");
  const ImportedLabels labels(store);
  EXPECT_TRUE(labels.fresh().empty());
  put(u"Work, New");
  put(u"Another,Old");
  EXPECT_EQ(labels.fresh(), (std::vector<Text>{u"Another", u"New"}));
  store.faults.unreadable = true;
  EXPECT_TRUE(labels.fresh().empty());
  const ImportedLabels unknown(store);
  store.faults.unreadable = false;
  EXPECT_TRUE(unknown.fresh().empty()) << "all of them would count as new";
}

}  // namespace
}  // namespace orvello
