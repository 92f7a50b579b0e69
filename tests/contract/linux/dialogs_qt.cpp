// The dialog contract on real widgets.
#include "tests/contract/linux/qt_person.h"
// The suite itself, as this is another test program.
#include "tests/contract/dialog_runs_contract.cpp"  // NOLINT
#include "tests/contract/dialogs_contract.cpp"      // NOLINT
#include "tests/contract/every_kind.cpp"            // NOLINT

namespace orvello::test {
namespace {

INSTANTIATE_TEST_SUITE_P(Qt, DialogsContract,
                         testing::Values(MakeBench([] { return std::make_unique<QtPerson>(); })));

}  // namespace
}  // namespace orvello::test
