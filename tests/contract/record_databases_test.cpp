#include "hosts/headless/memory_record_databases.h"
#include "tests/contract/record_databases_contract.h"

namespace orvello {
namespace {

struct MemoryPlace : DatabasesPlace {
  RecordDatabases& open() override { return databases; }
  void fail_reads_after(int count) override { databases.fail_read_after = count; }
  MemoryRecordDatabases databases;
};

INSTANTIATE_TEST_SUITE_P(Memory, RecordDatabasesContract,
                         ::testing::Values(DatabasesCase{
                             "memory", [] { return std::make_unique<MemoryPlace>(); }}));

}  // namespace
}  // namespace orvello
