// Importing from the window: counts first, and nothing comes in without OK.
#include "cli/import_preview.h"

#include <gtest/gtest.h>

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
    return import_after_preview(files, store, clock, dialogs, boxes, Language::english);
  }

  ScratchFolder folder;
  HeadlessClock clock;
  HeadlessDialogs dialogs;
  HeadlessBoxes boxes;
  MemoryStore store{clock};
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
