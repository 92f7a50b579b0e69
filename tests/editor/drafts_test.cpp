#include "editor/drafts.h"

#include <gtest/gtest.h>

#include <random>

#include "editor/draft_block.h"
#include "tests/settings/settings_fixture.h"

namespace orvello {
namespace {

class Drafts : public SettingsTest {
 protected:
  std::int32_t number() { return static_cast<std::int32_t>(random_()); }
  double date() { return static_cast<double>(number()) / 1440; }
  bool flag() { return random_() % 2 != 0; }
  // Any units, halves of pairs and zeros among them.
  Text text() {
    Text units(random_() % 40, u' ');
    for (char16_t& unit : units) unit = static_cast<char16_t>(random_());
    return units;
  }
  std::string bytes() {
    std::string all(random_() % 300, ' ');
    for (char& one : all) one = static_cast<char>(random_());
    return all;
  }

  AppointmentForm form() {
    AppointmentForm form;
    form.choice = {number(), date(), static_cast<EditScope>(random_() % 3)};
    form.subject = text();
    form.location = text();
    form.start_date = date(), form.end_date = date();
    form.start_time = date(), form.end_time = date();
    form.all_day = flag(), form.reminder_set = flag();
    form.reminder_minutes = number();
    form.is_private = flag();
    form.busy_status = static_cast<int>(random_() % 4);
    form.categories = text();
    for (auto count = random_() % 4; count > 0; --count) form.attendees.push_back({text(), text()});
    form.recurring = flag();
    form.pattern = {static_cast<RecurrenceType>(random_() % 7),
                    date(),
                    date(),
                    flag(),
                    number(),
                    date(),
                    date(),
                    number(),
                    number(),
                    number(),
                    number(),
                    number(),
                    number()};
    form.rules = bytes();
    form.body = text();
    form.ink = bytes();
    return form;
  }

  bool keep(const EditorDraft& draft) { return keep_draft(volume, draft); }
  // What a later run finds.
  bool finds(const EditorDraft& draft) {
    const auto kept = kept_draft(volume);
    return kept && kept->opened == draft.opened && kept->form == draft.form;
  }

 private:
  std::mt19937 random_{11};
};

TEST_F(Drafts, AreFoundAsTheyWereAndReplaceEachOther) {
  EXPECT_FALSE(kept_draft(volume));
  EXPECT_TRUE(forget_draft(volume)) << "there is none";
  EXPECT_EQ(databases.mounts, 0) << "nor is a volume made for that";
  for (int i = 0; i < 100; ++i) {
    const EditorDraft draft{form(), form()};
    ASSERT_TRUE(keep(draft));
    ASSERT_TRUE(finds(draft)) << i;
  }
  EditorDraft huge{form(), form()};
  huge.form.body.assign(300001, u'ж');
  EXPECT_TRUE(keep(huge) && finds(huge));
  EXPECT_TRUE(forget_draft(volume));
  EXPECT_FALSE(kept_draft(volume));
  EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(Drafts, WhatCannotBeWrittenOrReadIsSilentAndKeepsTheOneBefore) {
  const EditorDraft first{form(), form()};
  ASSERT_TRUE(keep(first));
  databases.fail_write = DatabaseError::disk_full;
  EXPECT_FALSE(keep({form(), form()}));
  EXPECT_FALSE(forget_draft(volume));
  databases.fail_write = DatabaseError::none;
  EXPECT_TRUE(finds(first));
  databases.fail_mount = DatabaseError::sharing_violation;
  EXPECT_FALSE(keep({form(), form()}));
  EXPECT_FALSE(kept_draft(volume));
  databases.fail_mount = DatabaseError::none;
  for (int reads = 0; reads < 2; ++reads) {
    databases.fail_read_after = reads;
    EXPECT_FALSE(kept_draft(volume)) << reads;
    databases.fail_read_after = reads;
    EXPECT_FALSE(keep({form(), form()})) << "not a second one beside it, after " << reads;
  }
  databases.fail_read_after = -1;
  EXPECT_TRUE(finds(first));
  EXPECT_TRUE(boxes.shown.empty()) << "a person is not bothered with drafts";
}

TEST_F(Drafts, ADamagedOneIsNone) {
  const std::string block = draft_block({form(), form()});
  for (std::size_t i = 0; i < block.size(); ++i) {
    std::string other = block;
    other[i] = static_cast<char>(other[i] ^ 0x10);
    EXPECT_FALSE(read_draft_block(other)) << i;
    EXPECT_FALSE(read_draft_block(block.substr(0, i))) << i;
  }
  EditorDraft odd{form(), form()};
  odd.form.start_date = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(read_draft_block(draft_block(odd)));
  odd = {form(), form()};
  odd.opened.busy_status = 7;
  EXPECT_FALSE(read_draft_block(draft_block(odd)));
}

}  // namespace
}  // namespace orvello
