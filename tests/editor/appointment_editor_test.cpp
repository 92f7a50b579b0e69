// The appointment editor from the tap that opens it to what the store has afterwards.
#include <gtest/gtest.h>

#include "calendar/dates.h"
#include "editor/appointment_rules.h"
#include "editor/editor_forms.h"
#include "editor/editor_lines.h"
#include "ports/messages.h"
#include "resources/editor_ids.h"
#include "resources/ids.h"
#include "resources/notes_template.h"
#include "settings/pretexts.h"
#include "store/save_appointment.h"
#include "tests/appointments.h"
#include "tests/editor/editor_bench.h"

namespace orvello {
namespace {

constexpr CalendarDate kSaturday = 46347;  // 21 November 2026
using Act = std::function<void(HeadlessDialog&)>;

class AppointmentEditorTest : public ::testing::Test, public EditorBench {
 protected:
  AppointmentEditorTest() {
    EXPECT_TRUE(session.Open(nullptr));
    settings.shown = settings.today = {11, 21, 2026};
    settings.locale = english_locale();
    device.clock.set({2026, 11, 6, 21, 10, 0, 0, 0});
    person([this](HeadlessDialog& dialog) { meet(dialog); });
  }

  // What the person does in the editors that open, one after the other; the question about series
  // is answered with `answer`.
  void meet(HeadlessDialog& dialog) {
    if (dialog.dialog.id == kDialogSeriesQuestion) {
      following_offered = dialog.seen(kChooseFollowing);
      return dialog.press(answer);
    }
    if (dialog.dialog.id != kDialogEditor) return;
    ++editors;
    for (const std::uint32_t command : {40001, 40004, 40008, 40032, 40033, 40035, 40031})
      EXPECT_FALSE(device.menu_bar.enabled(command));
    if (acts.empty()) return;
    const Act act = acts.front();
    acts.erase(acts.begin());
    act(dialog);
  }
  void edit(std::int32_t oid, CalendarDate occurrence, std::vector<Act> todo) {
    acts = std::move(todo);
    EditorForms(context).edit({oid, occurrence, EditScope::series});
    for (const std::uint32_t command : {40001, 40004, 40008, 40032, 40033, 40035, 40031})
      EXPECT_TRUE(device.menu_bar.enabled(command));
    EXPECT_FALSE(kept_draft(volume)) << "an editor that has ended leaves no draft";
  }
  void write(const Act& act) {
    edit(0, kNoDate, {[act](HeadlessDialog& dialog) {
           act(dialog);
           dialog.press(kEditorOk);
         }});
  }
  static void type(HeadlessDialog& dialog, int line, TextView text) {
    dialog.press(line);
    const EditorLine* pair = line_of(line);
    dialog.type(pair->edit, text);
  }
  static void choose(HeadlessDialog& dialog, int line, int row) {
    dialog.press(line);
    dialog.choose_row(line_of(line)->edit, row);
  }
  AppointmentForm stored(std::int32_t oid, CalendarDate occurrence = kNoDate) {
    AppointmentForm form;
    form.choice = {oid, occurrence,
                   occurrence == kNoDate ? EditScope::series : EditScope::occurrence};
    EXPECT_EQ(read_appointment(context.operation(), form), FormRead::read);
    return form;
  }

  int answer = kChooseSeries, editors = 0;
  bool following_offered = false;
  std::vector<Act> acts;
};

TEST_F(AppointmentEditorTest, WritesANewAppointment) {
  savePreTextToDB(volume, u"Office", kLocationPretexts);
  savePreTextToDB(volume, u"Home", kLocationPretexts);
  settings.strprevlocation = u"Office";
  settings.strdefcategory = u"Work";
  write([](HeadlessDialog& dialog) {
    EXPECT_EQ(dialog.title(), u"Appointment");
    EXPECT_EQ(dialog.text(kLineLocation), u"Office");
    EXPECT_EQ(dialog.text(kLineStartTime), u"12:00");
    EXPECT_EQ(dialog.text(kLineCategories), u"Work");
    EXPECT_EQ(dialog.text(kLineAttendees), kNoAttendees);
    EXPECT_EQ(dialog.text(kLineOccurs), u"Once");
    EXPECT_FALSE(dialog.seen(kLineAmount));
    type(dialog, kLineSubject, u"Dentist");
    EXPECT_FALSE(dialog.seen(kLineSubject));
    type(dialog, kLineLocation, u"Main street");
    EXPECT_TRUE(dialog.seen(kLineSubject));
    EXPECT_EQ(dialog.text(kLineSubject), u"Dentist");
    type(dialog, kLineStartTime, u"9.30");
    dialog.press(kEditorRemind);
    EXPECT_EQ(dialog.text(kLineAmount), u"30");
    choose(dialog, kLineUnit, 1);
    type(dialog, kLineAmount, u"x");
    choose(dialog, kLineStatus, 2);
    dialog.press(kEditorPrivate);
    dialog.press(kEditorNotes);
    EXPECT_EQ(dialog.title(), u"Appointment - Notes");
    dialog.type(kNotesPage, u"card");
    dialog.press(kEditorOk);
    EXPECT_FALSE(dialog.closed);
    EXPECT_EQ(dialog.title(), u"Appointment");
    EXPECT_FALSE(dialog.seen(kNotesPage));
  });
  EXPECT_EQ(boxes_shown(), Messages());
  const AppointmentForm form = stored(1);
  EXPECT_EQ(form.subject, u"Dentist");
  EXPECT_EQ(form.location, u"Main street");
  EXPECT_EQ(form.start_date + form.start_time, kSaturday + 9.5 / 24);
  EXPECT_EQ(form.end_date + form.end_time, kSaturday + 10.0 / 24);
  EXPECT_EQ(form.reminder_minutes, 60);
  EXPECT_EQ(form.busy_status, 2);
  EXPECT_TRUE(form.is_private);
  EXPECT_EQ(form.categories, u"Work");
  EXPECT_EQ(form.body, u"card");
  EXPECT_EQ(settings.strprevlocation, u"Main street");
  ChoiceList locations;
  loadPreTextToCB(volume, locations, kLocationPretexts);
  EXPECT_EQ(locations.items, (std::vector<Text>{u"Home", u"Main street", u"Office"}));
}

}  // namespace
}  // namespace orvello
