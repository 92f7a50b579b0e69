#include "store/edit_history.h"

#include "store/item_operations.h"
#include "store/save_appointment.h"
#include "tests/store/store_fixture.h"

namespace orvello {
namespace {

class EditHistoryTest : public StoreTest {
 protected:
  std::int32_t standup() {
    const auto oid = put_series(fields(u"Standup", at(2, 9), at(2, 10)));
    const auto moved = occurrence(oid, at(4, 9));
    write_all(*moved, fields(u"Moved", at(4, 15), at(4, 16)));
    EXPECT_TRUE(moved->save());
    return oid;
  }
  SaveResult save(const EditorChoice& choice, const std::function<void(AppointmentForm&)>& change) {
    AppointmentForm opened;
    opened.choice = choice;
    if (choice.oid != 0) {
      EXPECT_EQ(read_appointment(context, opened), FormRead::read);
    }
    AppointmentForm form = opened;
    change(form);
    return save_appointment(context, opened, form);
  }
  std::string days() {
    std::string all;
    for (int of_november = 2; of_november < 8; ++of_november) all += on(of_november) + "; ";
    return all;
  }
};

// Each kind of action, undone one after the other and redone: each day looks as it did.
TEST_F(EditHistoryTest, EveryStepComesBackAndGoesAgain) {
  const auto series = standup();
  const auto uid = (**store.load(series)).uid;
  const std::function<void()> actions[] = {
      [&] {
        save({}, [&](AppointmentForm& form) {
          form.subject = u"New";
          form.start_date = form.end_date = to_calendar_date(day(3));
          form.start_time = form.end_time = 0.75;
        });
      },
      [&] { save({series}, [](AppointmentForm& form) { form.subject = u"Scrum"; }); },
      [&] {
        save({series, at(5, 9), EditScope::occurrence},
             [](AppointmentForm& form) { form.location = u"here", form.end_time = 0.5; });
      },
      [&] {
        save({series, at(5, 9), EditScope::following},
             [](AppointmentForm& form) { form.subject = u"Later", form.start_time = 0.25; });
      },
      [&] { move_appointment(context, series, at(3, 9), day(5)); },
      [&] { copy_appointment(context, series, at(4, 15), day(5)); },
      [&] { delete_appointment(context, series, kDeleteOccurrence, at(2, 9)); },
      [&] { delete_appointment(context, series, kDeleteFollowing, at(4, 15)); },
      [&] { delete_appointment(context, series, kDeleteSeries, kNoDate); }};
  std::vector<std::string> seen{days()};
  for (const auto& action : actions) {
    action();
    seen.push_back(days());
    EXPECT_NE(seen.back(), seen[seen.size() - 2]);
  }
  for (int round = 0; round < 2; ++round) {
    for (std::size_t i = seen.size() - 1; i > 0; --i) {
      EXPECT_EQ(days(), seen[i]);
      EXPECT_TRUE(history.undo(boxes));
    }
    EXPECT_FALSE(history.can_undo());
    EXPECT_EQ((**store.load(series)).uid, uid);
    for (std::size_t i = 0; i < seen.size() - 1; ++i) {
      EXPECT_EQ(days(), seen[i]);
      EXPECT_TRUE(history.redo(boxes));
    }
    EXPECT_FALSE(history.can_redo());
  }
  // Whatever is done next takes the place of what was undone.
  EXPECT_TRUE(history.undo(boxes));
  copy_appointment(context, series, at(5, 9), day(2));
  EXPECT_FALSE(history.can_redo());
  EXPECT_EQ(boxes_shown(), "");
}

TEST_F(EditHistoryTest, WhatChangedElsewhereStaysAndItsStepIsForgotten) {
  const auto oid = put(fields(u"Lunch", at(3, 12), at(3, 13)));
  move_appointment(context, oid, kNoDate, day(4));
  copy_appointment(context, oid, kNoDate, day(5));
  move_appointment(context, oid, kNoDate, day(2));
  auto record = **store.load(oid);
  record.fields.subject = u"Dinner";
  store.put(record);
  const std::string before = days();
  EXPECT_FALSE(history.undo(boxes));
  EXPECT_EQ(days(), before);
  EXPECT_EQ(boxes_shown(),
            "Error|This appointment was changed elsewhere since; what was done here before that "
            "cannot be taken back.\n");
  EXPECT_TRUE(history.undo(boxes)) << "the copy is nobody else's";
  EXPECT_EQ(on(5), "No Appointments ");
  EXPECT_EQ(history.can_redo(), true);
  store.erase(oid);
  EXPECT_FALSE(history.undo(boxes));
  EXPECT_FALSE(history.can_undo());
}

TEST_F(EditHistoryTest, AFailedStepCanBeTriedAgain) {
  const auto oid = put(fields(u"Lunch", at(3, 12), at(3, 13)));
  delete_appointment(context, oid, kDeleteSeries, kNoDate);
  for (const auto& faults : {MemoryStore::Faults{.save = true, .reason = "full"},
                             MemoryStore::Faults{.unreadable = true, .reason = "full"}}) {
    store.faults = faults;
    EXPECT_FALSE(history.undo(boxes));
    EXPECT_EQ(boxes_shown(), "Error|Nothing was undone.\nfull\n");
  }
  store.faults = {};
  EXPECT_TRUE(history.undo(boxes));
  EXPECT_EQ(on(3), "12:00-13:00 Lunch");
}

// A store that gives no states, and one of many steps.
TEST_F(EditHistoryTest, RemembersOnlyWhatItCanTakeBack) {
  const auto oid = put(fields(u"Lunch", at(3, 12), at(3, 13)));
  for (int i = 0; i < 60; ++i) move_appointment(context, oid, kNoDate, day(4 + i % 2));
  int undone = 0;
  while (history.undo(boxes)) ++undone;
  EXPECT_EQ(undone, 50);
  EXPECT_TRUE(history.redo(boxes));
  EXPECT_TRUE(history.can_undo());
  store.faults.state = true;
  EXPECT_TRUE(move_appointment(context, oid, kNoDate, day(3)));
  EXPECT_FALSE(history.can_undo());
  EXPECT_FALSE(history.can_redo());
  EXPECT_EQ(boxes_shown(), "");
}

}  // namespace
}  // namespace orvello
