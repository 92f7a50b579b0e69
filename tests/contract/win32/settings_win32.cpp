// The settings sheet's contract on the platform's controls.
#include "tests/contract/win32/win32_person.h"
#undef TEXT  // the platform's: the texts have one of their own
// The suites themselves, as this is another test program.
#include "tests/contract/settings_bad_contract.cpp"       // NOLINT
#include "tests/contract/settings_category_contract.cpp"  // NOLINT
#include "tests/contract/settings_color_contract.cpp"     // NOLINT
#include "tests/contract/settings_contract.cpp"           // NOLINT
#include "tests/contract/settings_desk.cpp"               // NOLINT
#include "tests/contract/settings_display_contract.cpp"   // NOLINT
#include "tests/contract/settings_lists_contract.cpp"     // NOLINT
#include "tests/contract/settings_options_contract.cpp"   // NOLINT

namespace orvello::test {
namespace {

INSTANTIATE_TEST_SUITE_P(Win32, SettingsContract, testing::Values(MakeBench([] {
                           return std::make_unique<Win32Person>();
                         })));

}  // namespace
}  // namespace orvello::test
