// Every text of every dialog stands whole in its control, in real letters.
#include <gtest/gtest.h>

#include <QFontMetrics>

#include "draw/form_layout.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_text.h"
#include "resources/dialog_templates.h"
#include "resources/menus.h"
#include "resources/settings_templates.h"
#include "tests/qt/test_window.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;

constexpr int kMarkAndGap = 21, kPadding = 4;  // design units

// The room that a control's text has, across; 0: it shows none of its own.
int text_room(const ControlTemplate& control, int width, const Density& density) {
  if (control.image) return 0;
  switch (control.kind) {
    case Kind::check_box:
    case Kind::radio_button:
      return width - density.scaled(kMarkAndGap);
    case Kind::button:
    case Kind::default_button:
    case Kind::toggle:
      return width - 2 * density.scaled(kPadding);
    case Kind::label:
    case Kind::line:
      return width;
    default:
      return 0;
  }
}

TEST(DialogTexts, FitTheirControlsInEveryLanguage) {
  need_application();
  for (const LanguageInfo& info : all_languages()) {
    for (const DialogTemplate& dialog : all_dialogs(info.language)) {
      for (const auto& [dpi, text] : {std::pair{96, 1.0}, {96, 1.5}, {96, 1.25}, {192, 1.0}}) {
        Density density;
        density.dpi = dpi;
        density.text = text;
        const Size design = design_size(dialog);
        const Size room{density.scaled(design.width), density.scaled(design.height)};
        const FormLayout layout = lay_out_form(dialog, density.unit(), room);
        for (std::size_t i = 0; i < dialog.controls.size(); ++i) {
          const ControlTemplate& control = dialog.controls[i];
          const Rect& place = layout.places[i];
          const int width = text_room(control, place.width, density);
          if (width == 0) continue;
          const bool bold = control.kind == Kind::default_button;
          const QFontMetrics metrics(widget_font(density, kTextSize, bold));
          const QSize needed =
              metrics.boundingRect(QRect(0, 0, width, 10000), Qt::TextWordWrap, to_qt(control.text))
                  .size();
          EXPECT_LE(needed.width(), width) << dialog.id << " " << control.id << " at " << dpi;
          EXPECT_LE(needed.height(), place.height) << dialog.id << " " << control.id;
        }
        if (dialog.popup) continue;
        const QFontMetrics title(widget_font(density, kHeadingSize, true));
        const int left = room.width - density.scaled(kTouchHeight + 2 + 4 * kGrid);
        EXPECT_LE(title.horizontalAdvance(to_qt(dialog.title)), left) << dialog.id;
      }
    }
  }
}

// A menu may be as wide as the smallest screen, and a tab as its strip between the arrows.
TEST(DialogTexts, OfMenusAndTabsFitTheSmallestScreenInEveryLanguage) {
  need_application();
  constexpr int screen = 240, menu_frame = 2 * (kMarkAndGap + kPadding), arrows = 2 * 27 + 16;
  Density density;
  const QFontMetrics metrics(widget_font(density, kTextSize, false));
  for (const LanguageInfo& info : all_languages()) {
    const auto fits = [&](const Text& text, int frame) {
      EXPECT_LE(metrics.horizontalAdvance(to_qt(text)), density.scaled(screen - frame))
          << to_utf8(info.code) << ": " << to_utf8(text);
    };
    for (const MenuItem& item : options_menu(info.language, {})) fits(item.text, menu_frame);
    for (const MenuItem& item : day_menu(info.language, {true, true})) fits(item.text, menu_frame);
    for (const DialogTemplate& page : settings_pages(info.language)) fits(page.title, arrows);
  }
}

}  // namespace
}  // namespace orvello
