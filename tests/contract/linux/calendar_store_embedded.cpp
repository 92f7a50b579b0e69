#include <unistd.h>

#include <filesystem>

#include "store/embedded/embedded_store.h"
// The suite itself, as this is another test program.
#include "tests/contract/calendar_store_contract.cpp"  // NOLINT

namespace orvello::test {
namespace {

std::filesystem::path store_directory() {
  return std::filesystem::temp_directory_path() / ("orvello-stores-" + std::to_string(getpid()));
}

class StoreDirectory : public testing::Environment {
 public:
  void SetUp() override { std::filesystem::create_directories(store_directory()); }
  void TearDown() override { std::filesystem::remove_all(store_directory()); }
};

[[maybe_unused]] const auto* const kDirectory =
    testing::AddGlobalTestEnvironment(new StoreDirectory);

std::unique_ptr<RecordCalendarStore> make_embedded(const Clock& clock) {
  const auto path = store_directory() / "calendar.db";
  std::filesystem::remove(path);
  auto store = EmbeddedStore::open(path.string(), clock);
  return store ? std::move(*store) : nullptr;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Embedded, CalendarStoreContract,
                         testing::Values(MakeStore(make_embedded)));

}  // namespace orvello::test
