#include "editor/notes_pane.h"

#include <gtest/gtest.h>

#include "editor/notes_block.h"
#include "hosts/headless/headless_dialogs.h"
#include "hosts/headless/headless_host.h"
#include "resources/notes_template.h"
#include "store/notes_text.h"
#include "store/save_appointment.h"

namespace orvello {
namespace {

constexpr int kBeneath = 1;

struct NotesForm : DialogProcedure {
  explicit NotesForm(Host& host) : notes(host) {}
  void handle(Dialog& dialog, const DialogEvent& event) override { notes.handle(dialog, event); }
  EditorNotes notes;
};

class NotesPaneTest : public ::testing::Test {
 protected:
  NotesPaneTest() {
    DialogTemplate form;
    form.size = {240, 268};
    form.controls = {{ControlTemplate::Kind::button, kBeneath, u"OK", {0, 0, 60, 27}}};
    for (const ControlTemplate& control : notes_controls(Language::english, {0, 0, 240, 268}))
      form.controls.push_back(control);
    open_ = device.dialogs.open_modeless(form, procedure);
    dialog = device.dialogs.modeless;
    notes.set(*dialog, {}, {});
    notes.show(*dialog);
  }
  bool seen(std::initializer_list<int> controls) const {
    return std::all_of(controls.begin(), controls.end(),
                       [&](int control) { return dialog->seen(control); });
  }
  std::optional<NotesContent> saved() { return read_notes_block(notes.parts(*dialog).ink); }

  HeadlessHost device;
  Host host = device.host();
  NotesForm procedure{host};
  EditorNotes& notes = procedure.notes;
  std::unique_ptr<Dialog> open_;
  HeadlessDialog* dialog = nullptr;
};

TEST_F(NotesPaneTest, WordsStylesAndStrokesAreMadeWithItsToolsAndSaved) {
  EXPECT_EQ(dialog->focused, kNotesPage);
  EXPECT_FALSE(dialog->reachable(kNotesUndo));
  dialog->type(u"plain ");
  EXPECT_EQ(notes.parts(*dialog).body, u"plain ");
  EXPECT_EQ(notes.parts(*dialog).ink, "") << "words alone need no ink";
  dialog->press(kNotesBold);
  EXPECT_EQ(dialog->focused, kNotesPage) << "to type on";
  dialog->type(u"bold");
  EXPECT_TRUE(dialog->checked(kNotesBold));
  dialog->select_text(kNotesPage, 0, 3);
  EXPECT_FALSE(dialog->checked(kNotesBold)) << "the tools follow the caret";
  dialog->press(kNotesList);

  EXPECT_FALSE(dialog->seen(kNotesEraser));
  dialog->press(kNotesPen);
  EXPECT_TRUE(seen({kNotesEraser, kNotesText}) && !dialog->seen(kNotesItalic));
  dialog->draw(kNotesPage, {{10, 10}, {20, 30}});
  dialog->draw(kNotesPage, {{100, 10}, {100, 30}});
  dialog->press(kNotesEraser);
  EXPECT_FALSE(dialog->checked(kNotesPen));
  dialog->draw(kNotesPage, {{100, 12}});
  dialog->press(kNotesText);
  EXPECT_TRUE(dialog->seen(kNotesItalic));

  ASSERT_TRUE(saved());
  EXPECT_EQ(saved()->strokes.size(), 1u);
  EXPECT_EQ(saved()->runs.size(), 2u);
  for (int i = 0; i < 3; ++i) dialog->press(kNotesUndo);
  EXPECT_TRUE(saved()->strokes.empty());
  dialog->press(kNotesUndo);
  EXPECT_EQ(saved()->runs, (std::vector<NotesRun>{{6, 4, {true}}})) << "no list any more";
  while (dialog->reachable(kNotesUndo)) dialog->press(kNotesUndo);
  EXPECT_FALSE(notes.changed(*dialog));
  while (dialog->reachable(kNotesRedo)) dialog->press(kNotesRedo);
  EXPECT_EQ(saved()->strokes.size(), 1u);

  dialog->press(kNotesBack);
  EXPECT_FALSE(notes.shown() || dialog->seen(kNotesPage) || dialog->seen(kNotesBold));
  EXPECT_TRUE(saved()) << "what is hidden is there";
}

TEST_F(NotesPaneTest, WhatWasNotChangedIsAsItWas) {
  NotesContent page;
  page.text = u"list";
  page.runs = {{0, 4, {false, false, false, true}}};
  const std::string other("OVN\x02 of a later version", 23);
  const std::pair<std::string, Text> kept[] = {
      {"", u""}, {"", u"two\r\nlines\rand more"}, {notes_block(page), u"list"}, {other, u"text"}};
  for (const auto& [ink, body] : kept) {
    notes.set(*dialog, ink, body);
    EXPECT_FALSE(notes.changed(*dialog));
    EXPECT_EQ(notes.parts(*dialog).ink, ink);
    EXPECT_EQ(notes.parts(*dialog).body, body);
  }
  EXPECT_EQ(dialog->notes(kNotesPage)->content().text, u"text") << "of ink that nobody can read";
  EXPECT_TRUE(device.boxes.shown.empty());

  notes.set(*dialog, "", u"two\r\nlines");
  dialog->type(kNotesPage, u"other");
  notes.set(*dialog, "", u"two\r\nlines");
  EXPECT_FALSE(dialog->reachable(kNotesUndo)) << "what was before is gone";
}

TEST_F(NotesPaneTest, TextThatWasChangedElsewhereIsShownUnderTheStrokes) {
  NotesContent page;
  page.text = u"Buy milk and bread";
  page.runs = {{0, 3, {true}}, {4, 4, {false, true}}, {13, 5, {true}}};
  page.strokes = {{kBlack, 2, {{1, 2, 1}}}};
  notes.set(*dialog, notes_block(page), u"Buy mint");
  EXPECT_FALSE(notes.changed(*dialog));
  EXPECT_EQ(notes.parts(*dialog).body, u"Buy mint");
  EXPECT_EQ(notes.parts(*dialog).ink, notes_block(page));
  const NotesContent shown = dialog->notes(kNotesPage)->content();
  EXPECT_EQ(shown.text, u"Buy mint");
  EXPECT_EQ(shown.runs, (std::vector<NotesRun>{{0, 3, {true}}, {4, 2, {false, true}}}));
  EXPECT_EQ(shown.strokes, page.strokes);
}

TEST_F(NotesPaneTest, InkThatNobodyCanReadIsReplacedOnlyByAPersonWhoAgrees) {
  const std::string other = "ink of another program";
  const std::function<void()> changes[] = {[&] { dialog->type(kNotesPage, u"new"); },
                                           [&] {
                                             dialog->press(kNotesPen);
                                             dialog->draw(kNotesPage, {{10, 10}});
                                           },
                                           [&] {
                                             dialog->select_text(kNotesPage, 0, 4);
                                             dialog->press(kNotesUnderline);
                                           }};
  for (const auto& change : changes) {
    notes.set(*dialog, other, u"text");
    device.boxes.shown.clear();
    device.boxes.answers = {BoxAnswer::no};
    change();
    ASSERT_EQ(device.boxes.shown.size(), 1u);
    EXPECT_EQ(notes.parts(*dialog).ink, other);
    EXPECT_EQ(dialog->notes(kNotesPage)->content().text, u"text") << "as it was";
    EXPECT_TRUE(dialog->notes(kNotesPage)->content().strokes.empty());
    device.boxes.answers = {BoxAnswer::yes};
    dialog->press(kNotesText);
    change();
    dialog->press(kNotesText);
    dialog->type(u"!");
    EXPECT_EQ(device.boxes.shown.size(), 2u) << "once";
    EXPECT_NE(notes.parts(*dialog).ink, other);
  }
}

// From the pane into the store, what the day's list and the bubble make of it, and back.
TEST_F(NotesPaneTest, WhatTheStoreKeepsIsWhatBubblesShowAndThePaneOpens) {
  StoreSession session(device.store, device.boxes);
  ASSERT_TRUE(session.Open(nullptr));
  EditHistory history(session);
  const OperationContext context{session, device.boxes, device.window, device.files, history};
  AppointmentForm form;
  form.subject = u"x";
  const auto save = [&] {
    AppointmentForm before;
    before.choice = form.choice;
    if (form.choice.oid != 0) {
      EXPECT_EQ(read_appointment(context, before), FormRead::read);
      form = before;
    }
    auto parts = notes.parts(*dialog);
    form.ink = std::move(parts.ink);
    form.body = std::move(parts.body);
    EXPECT_EQ(save_appointment(context, before, form), SaveResult::saved);
    EXPECT_EQ(read_appointment(context, form), FormRead::read);
    notes.set(*dialog, form.ink, form.body);
    return to_utf8(notes_of(session, device.boxes, form.choice.oid, kNoDate)->text);
  };
  const auto page = [&] { return dialog->notes(kNotesPage)->content(); };
  dialog->type(u"words\nand more");
  EXPECT_EQ(save(), "words\nand more");
  EXPECT_EQ(form.ink, "");
  EXPECT_EQ(page().text, u"words\nand more") << "without ink its text is opened";
  dialog->press(kNotesPen);
  dialog->draw(kNotesPage, {{10, 10}, {20, 12}});
  EXPECT_EQ(save(), "words\nand more");
  EXPECT_EQ(page().strokes.size(), 1u);
  dialog->press(kNotesText);
  dialog->type(kNotesPage, u"other");
  EXPECT_EQ(save(), "other") << "the text is renewed with the ink";
  dialog->type(kNotesPage, u"");
  EXPECT_EQ(save(), "(Drawing)");
  dialog->press(kNotesPen);
  dialog->press(kNotesEraser);
  dialog->draw(kNotesPage, {{10, 10}});
  EXPECT_EQ(save(), "(No Notes)");
  EXPECT_EQ(form.ink, "");
  EXPECT_TRUE(device.boxes.shown.empty());
}

}  // namespace
}  // namespace orvello
