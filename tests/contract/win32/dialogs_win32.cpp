// The dialog contract on the platform's controls.
#include "tests/contract/win32/win32_person.h"
// The suite itself, as this is another test program.
#include "tests/contract/dialog_runs_contract.cpp"  // NOLINT
#include "tests/contract/dialogs_contract.cpp"      // NOLINT

namespace orvello::test {
namespace {

INSTANTIATE_TEST_SUITE_P(Win32, DialogsContract, testing::Values(MakeBench([] {
                           return std::make_unique<Win32Person>();
                         })));

}  // namespace
}  // namespace orvello::test
