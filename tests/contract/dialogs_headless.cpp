#include "hosts/headless/headless_host.h"
#include "tests/contract/dialogs_contract.h"
#include "tests/contract/headless_bench.h"

namespace orvello::test {
namespace {

INSTANTIATE_TEST_SUITE_P(Headless, DialogsContract, testing::Values(MakeBench([] {
                           return std::make_unique<HeadlessBench>();
                         })));

TEST(HeadlessInput, APanelIsRaisedBesideWhatItMustNotCoverOrNotAtAll) {
  HeadlessHost device;
  HeadlessInput& input = device.input;
  const auto room = [&] { return device.window.screen().work_area.height; };
  input.panel_height = 80;
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(input.raise_input_panel({8, 200, 100, 40}), PanelAnswer::raised);
    EXPECT_EQ(room(), 240);
  }
  EXPECT_EQ(input.raise_input_panel({8, 221, 100, 20}), PanelAnswer::no_room);
  EXPECT_EQ(room(), 320);
  input.raise_input_panel({});
  input.hide_input_panel();
  EXPECT_EQ(room(), 320);
}

TEST(HeadlessSheet, OneThatCannotBeMadeTellsNoPage) {
  HeadlessDialogs dialogs;
  dialogs.fail_sheets = true;
  RecordingProcedure told;
  EXPECT_EQ(dialogs.run_sheet(u"Sheet", {{sheet_pages()[0], &told}}), kSheetFailed);
  EXPECT_EQ(told.take(), Told());
}

}  // namespace
}  // namespace orvello::test
