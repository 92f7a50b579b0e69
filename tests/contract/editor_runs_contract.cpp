// From the question about a series to undo, and notes from the first word to the last stroke.
#include "resources/editor_ids.h"
#include "resources/notes_template.h"
#include "tests/appointments.h"
#include "tests/contract/editor_contract.h"

namespace orvello::test {
namespace {

std::vector<AppointmentRecord> all_records(MemoryStore& store) {
  std::vector<AppointmentRecord> records;
  const auto oids = store.oids(std::nullopt, std::nullopt);
  for (const std::int32_t oid : *oids) {
    const auto loaded = store.load(oid);
    records.push_back(**loaded);
  }
  return records;
}

}  // namespace

TEST_P(EditorContract, OneOccurrenceTheSeriesAllThatFollowAndBack) {
  AppointmentRecord weekly = one_hour({11, 6, 2026}, 9, u"Meeting");
  weekly.rules = "RRULE:FREQ=WEEKLY;COUNT=10";
  const std::int32_t oid = desk->device.store.put(weekly);
  const CalendarDate third = to_calendar_date(midnight_of(day_of(2026, 11, 20)) + 9 * 3600);
  const auto rename = [&](int answer, TextView subject) {
    desk->bench->in_front([&, answer, subject = Text(subject)] {
      desk->meet([&, subject] {
        desk->type_into(kLineSubject, subject);
        desk->tap(kEditorOk);
      });
      desk->bench->tap(answer);
    });
    desk->open({oid, third, EditScope::series});
    return all_records(desk->device.store);
  };
  auto records = rename(kChooseOccurrence, u"Once");
  ASSERT_EQ(records[0].exceptions.size(), 1u);
  EXPECT_EQ(records[0].exceptions[0].fields.subject, u"Once");
  EXPECT_EQ(records[0].fields.subject, u"Meeting");
  records = rename(kChooseSeries, u"All");
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].fields.subject, u"All");
  records = rename(kChooseFollowing, u"Later");
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0].fields.subject, u"All");
  EXPECT_EQ(records[1].fields.subject, u"Later");
  EXPECT_TRUE(records[0].exceptions.empty());
  EXPECT_EQ(records[1].exceptions.size(), 1u) << "a change goes with its occurrence";
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(desk->history.undo(desk->device.boxes));
  EXPECT_FALSE(desk->history.can_undo());
  records = all_records(desk->device.store);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].fields.subject, u"Meeting");
  EXPECT_TRUE(records[0].exceptions.empty());
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(desk->history.redo(desk->device.boxes));
  EXPECT_EQ(all_records(desk->device.store).size(), 2u);
  EXPECT_EQ(desk->boxes_shown(), Messages());
}

TEST_P(EditorContract, NotesKeepWhatIsTypedAndDrawn) {
  desk->meet([&] {
    desk->type_into(kLineSubject, u"Dentist");
    desk->tap(kEditorNotes);
    desk->bench->type(u"Bring the card");
    desk->bench->press_close();  // leaves the notes alone
    desk->tap(kEditorOk);
  });
  desk->open({});
  auto records = all_records(desk->device.store);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].fields.body, u"Bring the card");
  EXPECT_TRUE(records[0].fields.body_ink.empty());
  for (const bool drawn : {false, true}) {
    desk->meet([&] {
      desk->tap(kEditorNotes);
      EXPECT_EQ(desk->dialog().notes(kNotesPage)->content().strokes.size(), drawn ? 1u : 0u);
      desk->tap(kNotesPen);
      desk->bench->draw(kNotesPage, {{20, 60}, {40, 80}});
      desk->tap(kEditorOk);  // leaves the notes as well
      desk->tap(kEditorOk);
    });
    desk->open({records[0].oid});
    records = all_records(desk->device.store);
    EXPECT_EQ(records[0].fields.body, u"Bring the card");
    EXPECT_FALSE(records[0].fields.body_ink.empty());
  }
}

}  // namespace orvello::test
