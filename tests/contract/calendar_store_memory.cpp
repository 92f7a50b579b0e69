#include "hosts/headless/memory_store.h"
#include "tests/contract/calendar_store_contract.h"

namespace orvello::test {

INSTANTIATE_TEST_SUITE_P(Memory, CalendarStoreContract,
                         testing::Values(MakeStore([](const Clock& clock) {
                           return std::make_unique<MemoryStore>(clock);
                         })));

}  // namespace orvello::test
