// What every calendar store must do, on the device's own store over its stand-in.
// The suites themselves, as this is another test program; first, as windows.h takes names.
#include "tests/contract/calendar_store_contract.cpp"  // NOLINT
#include "tests/contract/edit_scripts_contract.cpp"    // NOLINT
#include "tests/contract/pattern_days_contract.cpp"    // NOLINT
#include "tests/contract/plain_calendar.cpp"           // NOLINT
#include "tests/contract/series_edits_contract.cpp"    // NOLINT
#include "tests/contract/store_changes_contract.cpp"   // NOLINT
#include "tests/contract/store_texts_contract.cpp"     // NOLINT

#include <memory>

#include "store/pim/pim_store.h"
#include "tests/store/pim/pim_server.h"

namespace orvello::test {
namespace {

// Made ready as a session makes it, for as long as it lives.
class ReadyPimStore : public PimStore {
 public:
  ReadyPimStore(const Clock& clock, int generation) : PimStore(clock, {generation, {}}) {
    EXPECT_TRUE(initialize());
  }
  ~ReadyPimStore() override { uninitialize(); }
};

StoreKind on_generation(int generation, bool exceptions) {
  const MakeStore make = [=](const Clock& clock) {
    standin().reset();
    standin().set_generation(generation);
    standin().answer_exceptions(exceptions);
    return std::make_unique<ReadyPimStore>(clock, generation);
  };
  StoreTraits traits;
  traits.whole_records = traits.rich_occurrences = traits.fetches_whole = false;
  traits.tells_by_poll = false;
  return {make, traits};
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Pim, CalendarStoreContract,
                         testing::Values(on_generation(2, false), on_generation(3, true)));

}  // namespace orvello::test
