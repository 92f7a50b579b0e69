// What every calendar store must do, on the device's own store over its stand-in.
// The suites themselves, as this is another test program; first, as windows.h takes names.
#include "tests/contract/calendar_store_contract.cpp"  // NOLINT
#include "tests/contract/edit_scripts_contract.cpp"    // NOLINT
#include "tests/contract/failing_reads_contract.cpp"   // NOLINT
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
    own_ = PimStore::create_application(false);
    EXPECT_TRUE(own_ && own_->logon(nullptr));
  }
  ~ReadyPimStore() override {
    own_.reset();
    uninitialize();
  }

 private:
  std::unique_ptr<StoreApplication> own_;  // so that whole records can be had at any time
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

// Its calls, writing ones too, fail in place of reads. Early ones each, later ones in steps.
class FailingPim : public FailingStore {
 public:
  std::unique_ptr<RecordCalendarStore> filled(
      const Clock& clock, const std::function<void(RecordCalendarStore&)>& fill) override {
    standin().reset();
    if (!filled_) {
      ReadyPimStore first(clock, 2);
      fill(first);
      standin().remember();
    }
    filled_ = true;
    standin().bring_back();
    return std::make_unique<ReadyPimStore>(clock, 2);
  }
  std::unique_ptr<RecordCalendarStore> again(std::unique_ptr<RecordCalendarStore> store,
                                             const Clock&) override {
    return store;
  }
  void fail_read(RecordCalendarStore&, int number) override {
    standin().answer_exceptions(number % 2 == 1);
    standin().fail_call(number <= 40 ? number : 40 + (number - 40) * 23, E_FAIL);
  }
  bool reached(RecordCalendarStore&) const override { return standin().reached(); }
  bool is_silent(int number) const override { return number <= 2; }  // the folder
  bool reads(std::string_view question) const override {
    return question != "cards" && question != "zone" && question != "foreign" && question != "uid";
  }

 private:
  bool filled_ = false;
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Pim, FailingReads, testing::Values(MakeFailingStore([] {
                           return std::make_unique<FailingPim>();
                         })));
INSTANTIATE_TEST_SUITE_P(Pim, CalendarStoreContract,
                         testing::Values(on_generation(2, false), on_generation(3, true)));

}  // namespace orvello::test
