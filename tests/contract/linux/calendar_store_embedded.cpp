#include <cstdlib>
#include <filesystem>

#include "store/embedded/embedded_store.h"
// The suite itself, as this is another test program.
#include "tests/contract/calendar_store_contract.cpp"  // NOLINT

namespace orvello::test {
namespace {

std::unique_ptr<RecordCalendarStore> make_embedded(const Clock& clock) {
  const auto path = std::filesystem::temp_directory_path() /
                    ("orvello-contract-" + std::to_string(std::rand()) + ".db");
  auto store = EmbeddedStore::open(path.string(), clock);
  std::filesystem::remove(path);  // the open file lives on without a name
  return store ? std::move(*store) : nullptr;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Embedded, CalendarStoreContract,
                         testing::Values(MakeStore(make_embedded)));

}  // namespace orvello::test
