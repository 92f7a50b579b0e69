// What every host's dialogs must do, run on each of them.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/contract/dialogs_bench.h"
#include "tests/contract/every_kind.h"

namespace orvello::test {

using Told = std::vector<std::string>;

// An event as the recording procedure writes it down.
inline std::string id(const char* event, int control) {
  return event + (" " + std::to_string(control));
}

ReportContent report_rows(int count);  // of two columns, the second a wide one

class DialogsContract : public testing::TestWithParam<MakeBench> {
 protected:
  void SetUp() override { bench_ = GetParam()(); }
  // The form of every kind, filled, with nothing told yet.
  void open();
  void fill(Dialog& dialog);
  Told after(const std::function<void()>& act);
  // What was told in front of a modal dialog, up to its end.
  Told run(const DialogTemplate& dialog, const std::function<void()>& person);

  std::unique_ptr<DialogsBench> bench_;
  RecordingProcedure told_;
  std::unique_ptr<Dialog> dialog_;
  int result_ = -99;
};

}  // namespace orvello::test
