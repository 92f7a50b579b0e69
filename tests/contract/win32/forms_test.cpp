// Every form of the program on the platform's controls.
#include "resources/dialog_templates.h"  // before the platform's, which has a TEXT of its own

#include <gtest/gtest.h>

#include "draw/form_layout.h"
#include "hosts/win32/form_paint.h"
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
  int objects = 0, windows = 0;
  for (int round = 0; round < 3; ++round) {
    for (const DialogTemplate& dialog : dialogs)
      EXPECT_EQ(person.dialogs().run_modal(dialog, closing), 1) << dialog.id;
    person.settle();
    if (round == 0) objects = drawing_objects();
    if (round == 0) windows = thread_windows();
  }
  EXPECT_EQ(closing.inits, 3 * static_cast<int>(dialogs.size()));
  EXPECT_LE(drawing_objects(), objects);
  EXPECT_EQ(thread_windows(), windows);
}

}  // namespace
}  // namespace orvello::test
