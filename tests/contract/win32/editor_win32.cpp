// The editor's and its companions' contract on the platform's controls.
#include "tests/contract/win32/win32_person.h"
#undef TEXT  // the platform's: the texts have one of their own
// The suites themselves, as this is another test program.
#include "tests/contract/companions_contract.cpp"   // NOLINT
#include "tests/contract/editor_contract.cpp"       // NOLINT
#include "tests/contract/editor_desk.cpp"           // NOLINT
#include "tests/contract/editor_runs_contract.cpp"  // NOLINT
#include "tests/contract/watched_dialogs.cpp"       // NOLINT

namespace orvello::test {
namespace {

INSTANTIATE_TEST_SUITE_P(Win32, EditorContract, testing::Values(MakeBench([] {
                           return std::make_unique<Win32Person>();
                         })));

}  // namespace
}  // namespace orvello::test
