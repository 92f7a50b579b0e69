// Importing from the window: counts first, and nothing comes in without OK.
#include "cli/import_preview.h"

#include <gtest/gtest.h>

#include "exchange/import_recorder.h"
#include "files/input_file.h"
#include "hosts/headless/headless_dialogs.h"
#include "hosts/headless/headless_ports.h"
#include "hosts/headless/memory_store.h"
#include "resources/dialog_templates.h"
#include "resources/ids.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

std::string event(const std::string& uid, const std::string& start) {
  return "BEGIN:VEVENT\r\nUID:" + uid + "\r\nDTSTART:" + start + "\r\nSUMMARY:" + uid +
         "\r\nEND:VEVENT\r\n";
}

class ImportPreview : public ::testing::Test {
 protected:
  std::string write(const std::string& name, const std::string& events) {
    const std::string path = folder / name;
    put_content(path, "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n" + events + "END:VCALENDAR\r\n");
    return path;
  }
  bool import(const std::vector<std::string>& files) {
    return import_after_preview(files, store, history, clock, dialogs, boxes, Language::english);
  }

  ScratchFolder folder;
  HeadlessClock clock;
  HeadlessDialogs dialogs;
  HeadlessBoxes boxes;
  MemoryStore store{clock};
  StoreSession session{store, boxes};
  EditHistory history{session};
};

TEST_F(ImportPreview, ShowsCountsAndProblemsAndImportsOnOk) {
  const std::string good =
      write("good.ics", event("a", "20261106T090000") + event("b", "20261107T090000"));
  const std::string mixed =
      write("mixed.ics", event("c", "20261108T090000") + event("bad", "20260231T090000"));
  Text counts;
  std::vector<Text> rows;
  dialogs.person = [&](HeadlessDialog& dialog) {
    counts = dialog.text(kControlImportText);
    rows = dialog.list(kControlImportFiles)->rows();
    EXPECT_TRUE(dialog.controls[kControlOk].enabled);
    EXPECT_EQ(dialog.focused, kControlOk);
    EXPECT_TRUE(store.oids({}, {})->empty()) << "a preview only reads";
    dialog.press(kControlOk);
  };
  EXPECT_TRUE(import({good, mixed}));
  EXPECT_EQ(counts, u"New: 3, to update: 0, to skip: 1");
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_EQ(rows[0], u"good.ics: 2");
  EXPECT_EQ(rows[1], u"mixed.ics: 1");
  EXPECT_TRUE(starts_with(rows[2], u"mixed.ics:")) << to_utf8(rows[2]);
  EXPECT_EQ(store.oids({}, {})->size(), 3u);
  ASSERT_EQ(boxes.shown.size(), 1u);
  EXPECT_EQ(boxes.shown[0].text, u"3 imported, 0 updated, 1 skipped");
  dialogs.person = [&](HeadlessDialog& dialog) {
    counts = dialog.text(kControlImportText);
    dialog.press(kControlOk);
  };
  EXPECT_TRUE(import({good}));
  EXPECT_EQ(counts, u"New: 0, to update: 2, to skip: 0");
  EXPECT_EQ(store.oids({}, {})->size(), 3u);
}

// What an import made, changed, cancelled and put beside the calendar goes back as one step.
TEST_F(ImportPreview, IsTakenBackAsAWhole) {
  ASSERT_TRUE(session.Open(nullptr));
  dialogs.person = [](HeadlessDialog& dialog) { dialog.press(kControlOk); };
  const auto looks = [&] {
    std::string all;
    for (const auto& [oid, record] : store.contents().records)
      all += std::to_string(oid) + record.uid + to_utf8(record.fields.subject) +
             std::to_string(record.start.count()) + record.residue + "\n";
    for (const ForeignComponent& one : store.contents().foreign) all += one.key + one.text + "\n";
    for (const auto& [oid, contact] : store.contents().contacts)
      all += to_utf8(contact.file_as) + "\n";
    for (const auto& [oid, card] : store.contents().cards) all += card.text + "\n";
    return all;
  };
  EXPECT_TRUE(
      import({write("one.ics", event("a", "20261106T090000") + event("b", "20261107T090000"))}));
  const std::string before = looks();
  const std::string cancel = folder / "cancel.ics";
  put_content(cancel, "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nMETHOD:CANCEL\r\n" +
                          event("b", "20261107T090000") + "END:VCALENDAR\r\n");
  EXPECT_TRUE(
      import({write("two.ics", event("a", "20261109T110000") + event("c", "20261110T090000") +
                                   "BEGIN:VTODO\r\nUID:t\r\nEND:VTODO\r\n"),
              cancel}));
  std::string after = looks();
  for (int round = 0; round < 2; ++round) {
    EXPECT_TRUE(history.undo(boxes));
    EXPECT_EQ(looks(), before);
    EXPECT_TRUE(history.redo(boxes));
    EXPECT_EQ(looks(), after);
  }
  // What somebody changed since stays, and so does all else of that import.
  auto changed = *store.load(1);
  changed->fields.subject = u"Theirs";
  store.put(*changed);
  after = looks();
  EXPECT_FALSE(history.undo(boxes));
  EXPECT_EQ(looks(), after);
  // Contacts go back, but no further.
  const std::string cards = folder / "cards.vcf";
  for (const char* name : {"Ann", "Bob"}) {
    put_content(cards, std::string("BEGIN:VCARD\r\nVERSION:4.0\r\nUID:u\r\nFN:") + name +
                           "\r\nEND:VCARD\r\n");
    EXPECT_TRUE(import({cards}));
  }
  EXPECT_TRUE(history.undo(boxes));
  EXPECT_NE(looks().find("Ann"), std::string::npos);
  EXPECT_FALSE(history.can_redo());
  EXPECT_TRUE(history.undo(boxes));
  EXPECT_EQ(looks(), after);
}

TEST_F(ImportPreview, TooMuchIsNotTakenBackInPart) {
  ASSERT_TRUE(session.Open(nullptr));
  const auto file = write("two.ics", event("a", "20261106T090000") + event("b", "20261107T090000"));
  for (const std::size_t most : {2u, 1u}) {
    ImportRecorder recorder(store, most);
    EXPECT_TRUE(import_files({file}, open_input_file, recorder, clock).done);
    history.keep(recorder.step());
    EXPECT_EQ(history.can_undo(), most == 2);
  }
}

TEST_F(ImportPreview, CancelAndClosingTheWindowLeaveTheStoreAlone) {
  const std::string file = write("one.ics", event("a", "20261106T090000"));
  dialogs.person = [](HeadlessDialog& dialog) { dialog.press(kControlCancel); };
  EXPECT_FALSE(import({file}));
  dialogs.person = nullptr;  // closed at once
  EXPECT_FALSE(import({file}));
  EXPECT_EQ(dialogs.opened, (std::vector<int>{kDialogImport, kDialogImport}));
  EXPECT_TRUE(store.oids({}, {})->empty());
  EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(ImportPreview, NothingUsableCannotBeAccepted) {
  const std::string file = write("empty.ics", event("bad", "20260231T090000"));
  bool enabled = true;
  int focused = 0;
  dialogs.person = [&](HeadlessDialog& dialog) {
    enabled = dialog.controls[kControlOk].enabled;
    focused = dialog.focused;
    dialog.press(kControlCancel);
  };
  EXPECT_FALSE(import({file}));
  EXPECT_FALSE(enabled);
  EXPECT_EQ(focused, kControlCancel);
}

TEST_F(ImportPreview, FailuresNameTheirReason) {
  EXPECT_FALSE(import({folder / "missing.ics"}));
  ASSERT_EQ(boxes.shown.size(), 1u);
  EXPECT_NE(to_utf8(boxes.shown[0].text).find("missing.ics"), std::string::npos);
  EXPECT_EQ(boxes.shown[0].icon, BoxIcon::error);
  EXPECT_TRUE(dialogs.opened.empty());

  const std::string file = write("one.ics", event("a", "20261106T090000"));
  dialogs.person = [&](HeadlessDialog& dialog) {
    store.faults.save = true;  // the disk fills up while the person reads
    store.faults.reason = "the disk is full";
    dialog.press(kControlOk);
  };
  EXPECT_FALSE(import({file}));
  ASSERT_EQ(boxes.shown.size(), 2u);
  EXPECT_EQ(boxes.shown[1].text, u"Nothing was imported: the disk is full");
  EXPECT_TRUE(store.oids({}, {})->empty());
}

}  // namespace
}  // namespace orvello
