// Importing from the window: what would come first, and nothing comes in without OK.
#include "cli/import_preview.h"

#include <gtest/gtest.h>

#include "exchange/import_recorder.h"
#include "files/input_file.h"
#include "hosts/headless/headless_dialogs.h"
#include "hosts/headless/headless_ports.h"
#include "hosts/headless/memory_store.h"
#include "hosts/headless/recording_canvas.h"
#include "ports/messages.h"
#include "resources/ids.h"
#include "resources/import_ids.h"
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
    const ImportDesk desk{store,  history, clock,  dialogs, boxes,    Language::english,
                          locale, true,    screen, measure, patience, slice};
    outcome = import_after_preview(files, desk);
    if (outcome.imported) tell_import(outcome.counts, desk);
    return outcome.imported;
  }
  // Cells with a bar between them, rows with a slash; a mark comes first.
  static std::string told(HeadlessDialog& dialog, int list) {
    std::string text;
    for (const ReportRow& row : dialog.rows(list).content().rows) {
      text += row.mark == ReportMark::none ? "" : row.mark == ReportMark::set ? "[x]" : "[ ]";
      for (const Text& cell : row.cells) text += to_utf8(cell) + "|";
      text += "/";
    }
    return text;
  }

  ScratchFolder folder;
  HeadlessClock clock;
  HeadlessDialogs dialogs;
  LocaleData locale = english_locale();
  ScreenLayout screen = layout_screen({240, 294}, 96, 96, true);
  RecordingCanvas measure{{1, 1}};
  std::chrono::milliseconds patience{60000}, slice{15};
  ImportOutcome outcome;
  HeadlessBoxes boxes;
  MemoryStore store{clock};
  StoreSession session{store, boxes};
  EditHistory history{session};
};

TEST_F(ImportPreview, ShowsWhatComesWithCountsAndProblemsAndImportsOnOk) {
  const std::string good =
      write("good.ics", event("b", "20261107T090000") + event("", "20261106T130000"));
  const std::string mixed =
      write("mixed.ics", event("c", "20261108T090000") + event("bad", "20260231T090000"));
  std::string counts, sources, items;
  dialogs.person = [&](HeadlessDialog& dialog) {
    counts = to_utf8(dialog.text(kControlImportText));
    sources = told(dialog, kControlImportFiles);
    items = told(dialog, kControlImportItems);
    EXPECT_EQ(dialog.rows(kControlImportItems).content().rows[0].name,
              u"New: Friday 6 November 2026, 13:00, No Subject");
    EXPECT_EQ(dialog.focused, kControlOk);
    EXPECT_TRUE(store.oids({}, {})->empty()) << "a preview only reads";
    // The whole of a problem's line.
    dialogs.person = nullptr;
    dialog.tap_row(kControlImportFiles, 2);
    dialog.press(kControlOk);
  };
  EXPECT_TRUE(import({good, mixed}));
  EXPECT_EQ(counts, "New: 3, to update: 0, to skip: 1");
  EXPECT_TRUE(sources.starts_with("[x]good.ics: 2|/[x]mixed.ics: 1|/mixed.ics:")) << sources;
  EXPECT_EQ(items, "+|11/06/26|13:00|No Subject|/+|11/07/26|9:00|b|/+|11/08/26|9:00|c|/");
  EXPECT_EQ(store.oids({}, {})->size(), 3u);
  ASSERT_EQ(boxes.shown.size(), 2u);
  EXPECT_TRUE(starts_with(boxes.shown[0].text, u"mixed.ics:"));
  EXPECT_EQ(boxes.shown[1].text, u"3 imported, 0 updated, 1 skipped");
  dialogs.person = [&](HeadlessDialog& dialog) {
    counts = to_utf8(dialog.text(kControlImportText));
    EXPECT_FALSE(dialog.seen(kControlImportFiles)) << "one calendar without problems";
    items = told(dialog, kControlImportItems);
    dialog.press(kControlOk);
  };
  screen = layout_screen({320, 294}, 96, 96, true);
  EXPECT_TRUE(
      import({write("again.ics", event("c", "20261108T100000") + event("b", "20261107T090000"))}));
  EXPECT_EQ(counts, "New: 0, to update: 2, to skip: 0\n* Changed 1   = Unchanged 1");
  EXPECT_EQ(items, "=|11/07/26|9:00|b|/*|11/08/26|10:00|c|/");
}

TEST_F(ImportPreview, LeavesOutCalendarsThatAreCleared) {
  const std::string one = write("one.ics", event("a", "20261106T090000"));
  const std::string two =
      write("two.ics", event("b", "20261107T090000") + event("a", "20261109T090000"));
  dialogs.person = [&](HeadlessDialog& dialog) {
    dialog.tap_row(kControlImportFiles, 0);
    EXPECT_EQ(told(dialog, kControlImportFiles), "[ ]one.ics: 1|/[x]two.ics: 2|/");
    EXPECT_EQ(dialog.text(kControlImportText), u"New: 2, to update: 0, to skip: 0");
    dialog.key(kControlImportFiles, kKeyDown);
    dialog.key(kControlImportFiles, kKeySpace);
    EXPECT_EQ(told(dialog, kControlImportItems), "|||Nothing to import|/");
    EXPECT_FALSE(dialog.controls[kControlOk].enabled);
    dialog.key(kControlImportFiles, kKeySpace);
    dialog.press(kControlOk);
  };
  EXPECT_TRUE(import({one, two}));
  EXPECT_EQ(boxes.shown.back().text, u"2 imported, 0 updated, 0 skipped");
  const auto record = *store.load(**store.oid_of_uid("a"));
  EXPECT_EQ(day_of(record->start), day_of(2026, 11, 9));
}

// A thousand rows at a time.
TEST_F(ImportPreview, ShowsTheRestOfALongListWhenItIsAskedFor) {
  std::string events;
  for (int i = 0; i < 2500; ++i) events += event("e" + std::to_string(i), "20261106T090000");
  std::vector<std::size_t> rows;
  dialogs.person = [&](HeadlessDialog& dialog) {
    const auto& list = dialog.rows(kControlImportItems).content().rows;
    for (int i = 0; i < 3; ++i) {
      rows.push_back(list.size());
      if (i == 0) {
        EXPECT_EQ(list.back().cells.back(), u"And 1,500 more");
      }
      dialog.key(kControlImportItems, kKeyEnd);
      dialog.key(kControlImportItems, kKeyReturn);
    }
  };
  EXPECT_FALSE(import({write("many.ics", events)}));
  EXPECT_EQ(rows, (std::vector<std::size_t>{1001, 2001, 2500}));
}

TEST_F(ImportPreview, TellsHowFarALongOneIsAndStopsWholly) {
  patience = slice = std::chrono::milliseconds(0);  // a step at a time, however quick they are
  std::string events;
  for (int i = 0; i < 1200; ++i) events += event("e" + std::to_string(i), "20261106T090000");
  const std::string file = write("many.ics", events);
  std::vector<std::string> texts;
  int stop_at = 0;  // the number of the form
  const auto person = [&](HeadlessDialog& dialog) {
    if (dialog.dialog.id == kDialogImport) return dialog.press(kControlOk);
    while (!dialog.closed) {
      texts.push_back(to_utf8(dialog.text(kControlProgressText)));
      if (--stop_at == 0) return dialog.press(kControlCancel);
      dialog.fire_timer(1);
    }
  };
  dialogs.person = person;
  stop_at = 3;
  EXPECT_FALSE(import({file}));
  EXPECT_EQ(dialogs.opened, std::vector<int>{kDialogProgress});
  EXPECT_FALSE(outcome.begun);
  EXPECT_TRUE(boxes.shown.empty());
  // In the middle of the import itself.
  dialogs.person = [&](HeadlessDialog& dialog) {
    if (dialog.dialog.id == kDialogImport) stop_at = 3;
    person(dialog);
  };
  EXPECT_FALSE(import({file}));
  EXPECT_TRUE(outcome.begun);
  EXPECT_TRUE(store.oids({}, {})->empty());
  EXPECT_FALSE(history.can_undo());
  EXPECT_EQ(boxes.shown.at(0).text, u"Stopped: nothing was imported.");
  stop_at = 0;
  dialogs.person = person;
  texts.clear();
  EXPECT_TRUE(import({file}));
  EXPECT_EQ(store.oids({}, {})->size(), 1200u);
  EXPECT_TRUE(std::any_of(texts.begin(), texts.end(),
                          [](const std::string& text) { return text.ends_with(" of 1,200"); }));
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
  EXPECT_EQ(outcome.first_day, day_of(2026, 11, 10)) << "a is not new";
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

TEST_F(ImportPreview, NothingUsableCannotBeAcceptedAndThePastCan) {
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
  // What lies in the past is better than nothing.
  dialogs.person = [](HeadlessDialog& dialog) { dialog.press(kControlOk); };
  EXPECT_TRUE(
      import({write("past.ics", event("b", "20261003T090000") + event("a", "20261001T090000"))}));
  EXPECT_EQ(outcome.first_day, day_of(2026, 10, 1));
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
