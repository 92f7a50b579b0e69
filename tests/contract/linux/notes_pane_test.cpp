// The notes pane on the screens that there are. With ORVELLO_PICTURES=folder it is also saved as it
// looks there.
#include <cmath>

#include "editor/notes_block.h"
#include "editor/notes_pane.h"
#include "hosts/headless/headless_host.h"
#include "resources/notes_template.h"
#include "tests/contract/linux/shown_screens.h"

namespace orvello::test {
namespace {

class PaneProcedure : public DialogProcedure {
 public:
  PaneProcedure(Host& host, const NotesContent& content)
      : notes(host), block_(notes_block(content)), text_(content.text) {}
  void handle(Dialog& dialog, const DialogEvent& event) override {
    if (event.kind == DialogEvent::Kind::init) {
      notes.set(dialog, block_, text_);
      notes.show(dialog);
      opened = &dialog;
    }
    notes.handle(dialog, event);
  }
  EditorNotes notes;
  Dialog* opened = nullptr;

 private:
  std::string block_;
  Text text_;
};

// A line as a hand draws it, pressing more in its middle.
NotesStroke wave(float left, float top, float length, Color color) {
  NotesStroke stroke;
  stroke.color = color;
  for (float x = 0; x <= length; x += 2)
    stroke.points.push_back(
        {left + x, top + 9 * std::sin(x / 7), 0.2f + 0.8f * std::sin(3.14f * x / length)});
  return stroke;
}

NotesContent full_page() {
  NotesContent page;
  page.text = u"Bold Курсив Underlined\nmilk\nхлеб\n\n";
  page.runs = {{0, 4, {true}},
               {5, 6, {false, true}},
               {12, 10, {false, false, true}},
               {23, 9, {false, false, false, true}}};
  for (int i = 0; i < 60; ++i) page.text += u"Встреча with a client, ";
  for (int i = 0; i < 6; ++i)
    page.strokes.push_back(
        wave(16, 40 + static_cast<float>(i) * 26, 190, i % 2 ? rgb(160, 0, 0) : kBlack));
  return page;
}

TEST(NotesPaneSizes, EveryToolIsSeenAndWorksOnEveryScreen) {
  on_all_screens([](const ShownScreen& screen, bool russian) {
    const std::string name = screen.name_in(russian);
    const Language language = russian ? Language::russian : Language::english;
    HeadlessHost device;
    Host host = device.host();
    QtPerson person(screen.size, screen.dpi);
    DialogTemplate form;
    form.id = 116;
    form.title = u"Appointment - Notes";
    form.size = {240, 292};
    form.controls = notes_controls(language, {0, 0, 240, 292}, screen.dpi == 96);
    PaneProcedure page(host, full_page());
    person.in_front([&] {
      save_picture(person, "notes-" + name + "-full");
      page.notes.set(*page.opened, {}, {});
      person.type(u"ж");
      save_picture(person, "notes-" + name + "-letter");
      person.tap(kNotesBold);
      person.tap(kNotesList);
      person.type(u"one");
      EXPECT_EQ(person.focused(), kNotesPage);
      save_picture(person, "notes-" + name + "-typing");
      person.tap(kNotesPen);
      EXPECT_TRUE(person.seen(kNotesEraser) && person.seen(kNotesText));
      EXPECT_FALSE(person.seen(kNotesBold));
      person.draw(kNotesPage, {{20, 30}, {40, 60}, {80, 50}, {120, 90}, {160, 40}});
      save_picture(person, "notes-" + name + "-drawing");
      EXPECT_EQ(page.opened->notes(kNotesPage)->content().strokes.size(), 1u);
      person.tap(kNotesUndo);
      EXPECT_TRUE(page.opened->notes(kNotesPage)->content().strokes.empty());
      person.tap(kNotesRedo);
      person.tap(kNotesEraser);
      person.draw(kNotesPage, {{40, 60}});
      EXPECT_TRUE(page.opened->notes(kNotesPage)->content().strokes.empty());
      person.tap(kNotesText);
      EXPECT_TRUE(person.seen(kNotesBold));
      person.tap(kNotesBack);
      EXPECT_FALSE(person.seen(kNotesPage) || page.notes.shown());
      EXPECT_EQ(page.notes.parts(*page.opened).body, u"жone");
    });
    person.dialogs().run_modal(form, page);
  });
}

}  // namespace
}  // namespace orvello::test
