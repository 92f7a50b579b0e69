#include "tests/contract/headless_bench.h"
#include "tests/contract/settings_contract.h"

namespace orvello::test {
namespace {

INSTANTIATE_TEST_SUITE_P(Headless, SettingsContract, testing::Values(MakeBench([] {
                           return std::make_unique<HeadlessBench>();
                         })));

}  // namespace
}  // namespace orvello::test
