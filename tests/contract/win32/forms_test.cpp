// Every form of the program on the platform's controls.
#include "resources/dialog_templates.h"  // before the platform's, which has a TEXT of its own

#include <gtest/gtest.h>

#include "draw/form_layout.h"
#include "hosts/win32/form_paint.h"
#include "tests/contract/every_kind.h"
#include "tests/contract/win32/native_objects.h"
#include "tests/contract/win32/win32_person.h"

namespace orvello::test {
namespace {

using Kind = ControlTemplate::Kind;

constexpr int kMarkAndGap = 21, kPadding = 4;  // design units

// The room that a control's text has, across; 0: it shows none of its own.
int text_room(const ControlTemplate& control, int width, const FormLook& look) {
  if (control.image) return 0;
  switch (control.kind) {
    case Kind::check_box:
    case Kind::radio_button:
      return width - look.scaled(kMarkAndGap);
    case Kind::button:
    case Kind::default_button:
    case Kind::toggle:
      return width - 2 * look.scaled(kPadding);
    case Kind::label:
      return width;
    default:
      return 0;
  }
}

TEST(Win32Forms, TextsFitTheirControlsInEveryLanguage) {
  const LocaleData locale = english_locale();
  for (const LanguageInfo& info : all_languages())
    for (const double unit : {1.0, 1.25, 1.5, 2.0})
      for (const DialogTemplate& dialog : all_dialogs(info.language)) {
        const FormLook look({unit, false, kLightColors}, locale);
        const Size design = design_size(dialog);
        const FormLayout layout =
            lay_out_form(dialog, unit, {look.scaled(design.width), look.scaled(design.height)});
        for (std::size_t i = 0; i < dialog.controls.size(); ++i) {
          const ControlTemplate& control = dialog.controls[i];
          const int width = text_room(control, layout.places[i].width, look);
          if (width == 0 || control.text.empty()) continue;
          SCOPED_TRACE(to_utf8(control.text) + " in " + std::to_string(dialog.id) + " at " +
                       std::to_string(unit));
          const bool one_line = control.kind != Kind::label && control.kind != Kind::check_box &&
                                control.kind != Kind::radio_button;
          const HFONT font = look.font(control.kind == Kind::default_button);
          if (one_line)
            EXPECT_LE(measured_text(font, control.text).width, width);
          else
            EXPECT_LE(wrapped_height(font, control.text, width), layout.places[i].height);
        }
      }
}

// Opened, looked at and closed again and again, they leave neither windows nor what is drawn with.
TEST(Win32Forms, OpenOnASmallScreenAndLeaveNothingBehind) {
  Win32Person person;
  class Closing : public DialogProcedure {
   public:
    void handle(Dialog& dialog, const DialogEvent& event) override {
      inits += event.kind == DialogEvent::Kind::init;
      if (event.kind == DialogEvent::Kind::timer) dialog.close(1);
      if (event.kind == DialogEvent::Kind::init) dialog.set_timer(1, 1);
    }
    int inits = 0;
  } closing;
  const std::vector<DialogTemplate> dialogs = all_dialogs(Language::english);
  // What is made at first use may come late, with the painting; what a form leaves, each time.
  constexpr int kRounds = 5, kSettled = 1;
  int objects = 0, windows = 0;
  for (int round = 0; round < kRounds; ++round) {
    for (const DialogTemplate& dialog : dialogs)
      EXPECT_EQ(person.dialogs().run_modal(dialog, closing), 1) << dialog.id;
    test::settle(person.window());  // with all that is painted late
    if (round == kSettled) objects = drawing_objects();
    if (round == kSettled) windows = thread_windows();
  }
  EXPECT_EQ(closing.inits, kRounds * static_cast<int>(dialogs.size()));
  EXPECT_LT(drawing_objects(), objects + kRounds - 1 - kSettled);
  EXPECT_EQ(thread_windows(), windows);
}

TEST(Win32Forms, TheKeyboardGoesOnWhereItWasWhenAModalFormIsGone) {
  Win32Person person;
  RecordingProcedure outer, inner;
  Dialog* below = nullptr;
  outer.act = [&](Dialog& dialog, const DialogEvent&) { below = &dialog; };
  person.in_front([&] {
    for (const bool sheet : {false, true}) {
      person.tap(kEdit);
      person.type(u"a");
      person.in_front([&] {
        if (!sheet) person.tap(kMultiLine);
        person.type(u"not here");
      });
      if (sheet)
        person.dialogs().run_sheet(u"Pages", {SheetPage{sheet_pages()[0], &inner}});
      else
        person.dialogs().run_modal(every_kind_form(), inner);
      EXPECT_EQ(person.focused(), kEdit);
      person.type(u"b");
    }
    EXPECT_EQ(below->text(kEdit), u"abab");
  });
  person.dialogs().run_modal(every_kind_form(), outer);
}

TEST(Win32Forms, ALetterChoosesTheNextRowThatBeginsWithIt) {
  Win32Person person;
  RecordingProcedure procedure;
  procedure.act = [&](Dialog& dialog, const DialogEvent& event) {
    if (event.kind == DialogEvent::Kind::init)
      dialog.choice(kDropList)->set_rows(
          {u"Work", u"home", u"", u"Holiday", u"\u0414\u043e\u043c"});
    if (event.kind != DialogEvent::Kind::command) return;
    ChoiceControl& rows = *dialog.choice(kDropList);
    dialog.focus(kDropList);
    const std::pair<TextView, int> typed[] = {{u"H", 1},      {u"h", 3}, {u"h", 1},
                                              {u"\u0434", 4}, {u"x", 4}, {u"w", 0}};
    for (const auto& [letter, row] : typed) {
      person.type(letter);
      EXPECT_EQ(rows.selected(), row) << to_utf8(letter);
    }
    // In the list that is down it moves the mark alone, until that is taken.
    rows.open();
    person.type(u"h");
    EXPECT_EQ(rows.selected(), 0);
    person.key(VK_RETURN, false, false);
    EXPECT_EQ(rows.selected(), 1);
  };
  person.in_front([&] { person.tap(kButton); });
  person.dialogs().run_modal(every_kind_form(), procedure);
}

}  // namespace
}  // namespace orvello::test
