// The settings sheet in front of a person, on any host's dialogs; the rest of the device is in
// memory. A test of a page:
//
//   TEST_P(SettingsContract, ThePageDoesSomething) {
//     EXPECT_EQ(desk->open(kPageTimes, [&] {
//       desk->choose(kTimesReminder, 3);     // what a person does, on the page that is shown
//       EXPECT_EQ(desk->text(kTimesNote), u"...");
//       desk->ok();                          // a sheet that is left open is cancelled
//     }), kSheetOk);
//     EXPECT_EQ(desk->number(u"defremindtime"), 3);
//   }
//
// With `start` the whole program runs behind the sheet, and `open` is its command. Such a suite
// stands in tests/contract/settings_*_contract.cpp, and is included in linux/settings_qt.cpp.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "app/application.h"
#include "options/settings_sheet.h"
#include "resources/ids.h"
#include "tests/contract/dialogs_bench.h"
#include "tests/contract/watched_dialogs.h"
#include "tests/editor/editor_bench.h"

namespace orvello::test {

inline constexpr int kPageDisplay = 0, kPageOptions = 1, kPagePretext = 2, kPageProfiles = 3,
                     kPageTimes = 4, kPageColor = 5, kPageCategory = 6, kPageIcons = 7;

// What the sheet asked of a program that is not there.
struct NotedCommands : SettingsCommands {
  bool preview(ViewMode view, const SettingsRecord& settings, Canvas& canvas) override {
    previews.push_back(view);
    return !on_preview || on_preview(view, settings, canvas);
  }
  void preview_colors(ColorGroup group, const SettingsRecord& settings, Canvas&) override {
    color_previews.push_back({group, settings.item_colors});
  }
  void reload_view() override { ++reloads; }
  void reopen_day_view() override { ++day_views; }
  void rebuild_profile_menu() override { ++profile_menus; }

  std::vector<ViewMode> previews;
  std::vector<std::pair<ColorGroup, ItemColors>> color_previews;
  std::function<bool(ViewMode, const SettingsRecord&, Canvas&)> on_preview;
  int reloads = 0, day_views = 0, profile_menus = 0;
};

struct SettingsDesk : EditorBench {
  // The record is as a start loads it from an empty registry.
  explicit SettingsDesk(std::unique_ptr<DialogsBench> person, bool russian = false);
  ~SettingsDesk();

  void load();                // the record anew, as the next start does
  void start(ViewMode view);  // the whole program, on 21 November 2026
  void settle();              // until it has drawn

  // Opens the sheet, turns to the page and lets the person act. How it ended.
  int open(int page, std::function<void()> acts);
  void show_page(int page) { bench->show_page(page); }
  void tap(int control) { bench->tap(control); }
  void choose(int control, int row) { bench->choose_row(control, row); }  // of a drop list, combo
  void type(int control, TextView text);  // in place of what stands there
  void ok() { bench->press_ok(); }
  void cancel() { bench->press_cancel(); }

  // What stands in the topmost dialog, of the sheet on the page that is shown.
  Dialog& dialog() const { return *watched.open.back(); }
  Text text(int control) const { return dialog().text(control); }
  bool checked(int control) const { return dialog().checked(control); }
  int row(int control) const { return dialog().choice(control)->selected(); }

  const SettingsRecord& record() const { return program ? program->settings() : settings; }
  // What the registry has, -1 or nothing for a value that is not there or of the other kind.
  std::int32_t number(TextView name) const;
  std::optional<Text> stored_text(TextView name) const;
  void store(TextView name, std::uint32_t number);
  void store(TextView name, TextView text);

  std::unique_ptr<DialogsBench> bench;
  WatchedDialogs watched{bench->dialogs()};
  HeadlessLocale locale;
  Host whole;  // with these dialogs and this locale
  NotedCommands commands;
  OptionsContext here;  // of the sheet alone
  std::unique_ptr<Application> program;
};

class SettingsContract : public testing::TestWithParam<MakeBench> {
 protected:
  void SetUp() override { desk = std::make_unique<SettingsDesk>(GetParam()()); }
  // Another one, in front of the same host.
  void renew(bool russian = false) {
    desk = nullptr;
    desk = std::make_unique<SettingsDesk>(GetParam()(), russian);
  }
  std::unique_ptr<SettingsDesk> desk;
};

}  // namespace orvello::test
