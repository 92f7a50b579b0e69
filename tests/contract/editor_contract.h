// The appointment editor in front of a person, on any host's dialogs; the rest of the device is in
// memory.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "editor/editor_forms.h"
#include "store/save_appointment.h"
#include "tests/contract/dialogs_bench.h"
#include "tests/contract/watched_dialogs.h"
#include "tests/editor/editor_bench.h"

namespace orvello::test {

// The editor's bench with dialogs of its own.
struct EditorDesk : EditorBench {
  explicit EditorDesk(std::unique_ptr<DialogsBench> person, bool russian = false);

  void open(const EditorChoice& choice) { EditorForms(here).edit(choice); }
  // The person, in front of the next dialog; an editor that is left open is cancelled.
  void meet(std::function<void()> acts);
  Text text(int control) const { return watched.open.back()->text(control); }
  Dialog& dialog() const { return *watched.open.back(); }
  void tap(int control);
  void choose(int line, int row);           // taps the line and the row
  void type_into(int line, TextView text);  // taps the line and types, in place of what was there
  AppointmentForm stored(std::int32_t oid, CalendarDate occurrence = kNoDate);

  std::unique_ptr<DialogsBench> bench;
  WatchedDialogs watched{bench->dialogs()};
  HeadlessLocale locale;
  Host whole;          // with these dialogs and this locale
  EditorContext here;  // likewise
  int taps = 0;
};

class EditorContract : public testing::TestWithParam<MakeBench> {
 protected:
  void SetUp() override { desk = std::make_unique<EditorDesk>(GetParam()()); }
  std::unique_ptr<EditorDesk> desk;
};

}  // namespace orvello::test
