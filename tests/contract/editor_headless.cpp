#include "tests/contract/editor_contract.h"
#include "tests/contract/headless_bench.h"

namespace orvello::test {
namespace {

INSTANTIATE_TEST_SUITE_P(Headless, EditorContract, testing::Values(MakeBench([] {
                           return std::make_unique<HeadlessBench>();
                         })));

}  // namespace
}  // namespace orvello::test
