#include <gtest/gtest.h>

#include "app/application.h"
#include "hosts/headless/headless_host.h"
#include "hosts/headless/recording_canvas.h"
#include "ports/messages.h"
#include "resources/ids.h"
#include "settings/profiles.h"
#include "settings/registry_access.h"
#include "tests/appointments.h"

namespace orvello {
namespace {

using namespace std::chrono_literals;

// A sheet that does what a test says while it is open.
struct ScriptedSheet : SettingsForm {
  void run(SettingsRecord& settings, SettingsCommands& commands) override {
    script(settings, commands);
  }
  std::function<void(SettingsRecord&, SettingsCommands&)> script;
};

struct FormsTest : testing::Test {
  void start(ViewMode view) {
    device.files.present.insert(u"\\Program Files\\Orvello\\settings.vol");
    AppointmentRecord record = one_hour({11, 9, 2026}, 9, u"Dentist");
    record.fields.location = u"Room 7";
    device.store.put(record);
    application = std::make_unique<Application>(device.host(),
                                                StartOptions{static_cast<int>(view), {11, 9, 2026}},
                                                FormParts{.settings = &sheet});
    ASSERT_EQ(application->start_up(), StartResult::running);
    settle();
  }
  void settle() {
    device.window.pump();
    EXPECT_TRUE(application->grid().worker().wait_until_idle(20s));
  }
  void open_sheet(std::function<void(SettingsRecord&, SettingsCommands&)> script) {
    sheet.script = std::move(script);
    device.window.command(kCommandSettings);
  }
  static bool drew(const RecordingCanvas& canvas, TextView text, std::optional<Color> color = {}) {
    for (const DrawnOperation& one : canvas.of_kind(DrawnOperation::Kind::text))
      if (one.text == text && (!color || one.style.color == *color)) return true;
    return false;
  }

  HeadlessHost device;
  ScriptedSheet sheet;
  std::unique_ptr<Application> application;
};

TEST_F(FormsTest, APreviewShowsEachViewWithTheSettingsGiven) {
  start(ViewMode::month);
  const int requests = application->grid().redraw_requests();
  int scripts = 0;
  open_sheet([&](SettingsRecord& settings, SettingsCommands& commands) {
    ++scripts;
    for (const int monday : {0, 1}) {
      SettingsRecord tried = settings;
      tried.firstdayofweek = tried.showlocation = tried.coloryearview = monday;
      tried.item_colors[static_cast<std::size_t>(ColorSlot::year_appointment_day_text)] = 0x123456;
      RecordingCanvas month({320, 200}), year({240, 290}), day({240, 290});
      EXPECT_TRUE(commands.preview(ViewMode::month, tried, month));
      const auto first = month.fill_at({319, 199});
      EXPECT_TRUE(first) << "all of the canvas is filled";
      Text names;
      for (const DrawnOperation& one : month.of_kind(DrawnOperation::Kind::text))
        if (one.text == u"Sun" || one.text == u"Mon") names += one.text;
      EXPECT_EQ(names, monday ? u"MonSun" : u"SunMon");
      EXPECT_TRUE(commands.preview(ViewMode::year, tried, year));
      EXPECT_EQ(drew(year, u"9", Color{0x123456}), monday == 1);
      EXPECT_TRUE(commands.preview(ViewMode::day, tried, day));
      EXPECT_TRUE(drew(day, u"Dentist"));
      const auto texts = day.of_kind(DrawnOperation::Kind::text);
      ASSERT_FALSE(texts.empty());
      EXPECT_NE(texts[0].text.find(u"Nov"), Text::npos) << "the strip";
      EXPECT_EQ(drew(day, u"[Room 7]"), monday == 1);
      EXPECT_EQ(settings.firstdayofweek, 0);
    }
    device.store.faults.unreadable = true;
    RecordingCanvas canvas({240, 290});
    EXPECT_FALSE(commands.preview(ViewMode::day, settings, canvas));
    EXPECT_TRUE(drew(canvas, u"Cannot be read"));
    device.store.faults = {};
    EXPECT_EQ(application->grid().redraw_requests(), requests) << "the view behind stays";
  });
  EXPECT_EQ(scripts, 1);
  EXPECT_EQ(application->grid().redraw_requests(), requests + 1);
}

TEST_F(FormsTest, TheSheetReachesTheViewsAndTheProfileMenu) {
  start(ViewMode::month);
  const int drawings = device.surfaces.published;
  open_sheet([&](SettingsRecord& settings, SettingsCommands& commands) {
    settings.showdays = 1;
    commands.reload_view();
    settle();
    EXPECT_EQ(device.surfaces.published, drawings + 1);
    EXPECT_EQ(application->grid().month().layout().cells.size(), 42u);
    ListSelection labels{{Text(u"Work")}, {0}};
    saveProfileInfoToDatabase({device.databases, device.boxes, device.files}, u"pfile-Work",
                              labels);
    commands.rebuild_profile_menu();
    EXPECT_EQ(device.menu_bar.menu(kCommandProfileMenu).size(), 3u);
    settings.dvfontsize = 15;
    commands.reopen_day_view();
  });
  EXPECT_EQ(application->state().view_mode, ViewMode::day);

  const auto font = [&] {
    return device.dialogs.modeless->rows(kControlDayList).content().font.height;
  };
  EXPECT_EQ(font(), font_height(15, 96));
  open_sheet([&](SettingsRecord& settings, SettingsCommands& commands) {
    settings.dvfontsize = 9;
    commands.reopen_day_view();
    settings.timeformat = 1;  // told by nobody: the list follows when the sheet is closed
  });

  EXPECT_EQ(font(), font_height(9, 96));
  EXPECT_EQ(device.dialogs.modeless->rows(kControlDayList).content().rows[0].cells[0],
            u"9:00-10:00");
  EXPECT_EQ(device.dialogs.modeless->focused, kControlDayList);
}

// Somebody changed the registry and the volume behind the window's back.
TEST_F(FormsTest, SettingsThatAnotherProcessChangedAreTakenOver) {
  for (const ViewMode view : {ViewMode::month, ViewMode::day}) {
    start(view);
    const MonthDayYear date = application->state().current;
    WriteNumberSetting(device.registry, u"dvfontsize", view == ViewMode::day ? 15 : 14);
    WriteTextSetting(device.registry, u"activeprofilename", u"Work");
    saveProfileInfoToDatabase({device.databases, device.boxes, device.files}, u"pfile-Work",
                              {{Text(u"Work")}, {0}});
    const int requests = application->grid().redraw_requests();
    application->load_settings_again();
    settle();
    EXPECT_EQ(application->settings().dvfontsize, view == ViewMode::day ? 15 : 14);
    EXPECT_EQ(application->settings().profile_labels, std::vector<Text>{u"Work"});
    EXPECT_EQ(application->state().view_mode, view);
    EXPECT_EQ(application->state().current, date);
    if (view == ViewMode::month) {
      EXPECT_EQ(application->grid().redraw_requests(), requests + 1);
    } else {
      EXPECT_EQ(device.dialogs.modeless->rows(kControlDayList).content().font.height,
                font_height(15, 96));
    }
    application->handle_message({kMessageClose, 0, {}, 0});
  }
}

}  // namespace
}  // namespace orvello
