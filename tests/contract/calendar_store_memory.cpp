#include "hosts/headless/memory_store.h"
#include "tests/contract/calendar_store_contract.h"
#include "tests/contract/failing_reads_contract.h"

namespace orvello::test {
namespace {

class FailingMemory : public FailingStore {
 public:
  std::unique_ptr<RecordCalendarStore> filled(
      const Clock& clock, const std::function<void(RecordCalendarStore&)>& fill) override {
    auto store = std::make_unique<MemoryStore>(clock);
    fill(*store);
    return store;
  }
  std::unique_ptr<RecordCalendarStore> again(std::unique_ptr<RecordCalendarStore> store,
                                             const Clock&) override {
    return store;
  }
  void fail_read(RecordCalendarStore& store, int number) override {
    of(store).faults.read = number;
    asked_ = number;
  }
  bool reached(RecordCalendarStore& store) const override {
    return asked_ > 0 && of(store).faults.read == 0;
  }

 private:
  static MemoryStore& of(RecordCalendarStore& store) { return static_cast<MemoryStore&>(store); }
  int asked_ = 0;
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Memory, CalendarStoreContract,
                         testing::Values(MakeStore([](const Clock& clock) {
                           return std::make_unique<MemoryStore>(clock);
                         })));

INSTANTIATE_TEST_SUITE_P(Memory, FailingReads, testing::Values(MakeFailingStore([] {
                           return std::make_unique<FailingMemory>();
                         })));

}  // namespace orvello::test
