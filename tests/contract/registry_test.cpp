#include "hosts/headless/memory_registry.h"
#include "tests/contract/registry_contract.h"

namespace orvello {
namespace {

struct MemoryPlace : RegistryPlace {
  Registry& open() override { return registry; }
  void close_all() override {}
  MemoryRegistry registry;
};

INSTANTIATE_TEST_SUITE_P(Memory, RegistryContract,
                         ::testing::Values(RegistryCase{
                             "memory", [] { return std::make_unique<MemoryPlace>(); }}));

}  // namespace
}  // namespace orvello
