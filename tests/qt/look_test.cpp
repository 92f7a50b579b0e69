// How the window's own widgets follow the desktop.
#include <QAbstractButton>
#include <QLabel>

#include "draw/readable.h"
#include "hosts/qt/bar_button.h"
#include "hosts/qt/form_widget.h"
#include "hosts/qt/qt_dialogs.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_menu_bar.h"
#include "ports/messages.h"
#include "resources/dialog_templates.h"
#include "resources/menus.h"
#include "tests/qt/test_window.h"

namespace orvello {
namespace {

TEST(Look, EveryTextCanBeReadOnEveryGroundThatItStandsOn) {
  using C = LookColors;
  const struct {
    const char* what;
    Color C::*text;
    std::vector<Color C::*> grounds;
    double least;
  } kPairs[] = {
      {"text", &C::text, {&C::ground, &C::field, &C::hover, &C::accent_tint}, kTextContrast},
      {"dim", &C::dim_text, {&C::ground, &C::field}, kTextContrast},
      {"accent", &C::accent, {&C::ground, &C::field, &C::hover, &C::accent_tint}, kTextContrast},
      {"chosen", &C::accent_text, {&C::accent, &C::accent_down, &C::dim_text}, kTextContrast},
      {"headings", &C::warning, {&C::ground}, kTextContrast},
      {"headings", &C::error, {&C::ground}, kTextContrast},
      {"edge", &C::edge, {&C::ground, &C::field}, 3}};
  for (const LookColors& colors : {kLightColors, kDarkColors})
    for (const auto& pair : kPairs)
      for (const auto ground : pair.grounds)
        EXPECT_GE(contrast(colors.*pair.text, colors.*ground), pair.least)
            << pair.what << (&colors == &kDarkColors ? " dark" : " light") << std::hex << " on "
            << colors.*ground;
  for (const Color ground : {kLightColors.ground, kDarkColors.ground, kDarkColors.field})
    for (const Color color : {rgb(0, 0, 153), kBlack, kWhite, rgb(128, 128, 128), rgb(247, 0, 0)})
      EXPECT_GE(contrast(legible_on(ground, color), ground), kTextContrast) << std::hex << color;
  EXPECT_EQ(legible_on(kLightColors.ground, rgb(0, 0, 153)), rgb(0, 0, 153)) << "as it was meant";
}

TEST(Look, IsFoundOutFromPaletteFontAndSettings) {
  QPalette light, dark;
  dark.setColor(QPalette::Window, QColor(30, 30, 34));
  dark.setColor(QPalette::WindowText, QColor(240, 240, 240));
  const struct {
    QPalette palette;
    double points;
    DesktopSettings settings;
    DesktopLook look;
  } kDesktops[] = {{light, 10, {}, {false, 1}},         {dark, 10, {}, {true, 1}},
                   {light, 9, {true, {}}, {true, 1}},   {dark, 11, {false, {}}, {true, 1}},
                   {light, 16.5, {}, {false, 1.5}},     {light, 90, {}, {false, 2}},
                   {light, 3, {}, {false, 0.8}},        {light, 11, {{}, 1.25}, {false, 1.25}},
                   {light, 11, {{}, 100.0}, {false, 2}}};
  for (const auto& desktop : kDesktops) {
    QFont font;
    font.setPointSizeF(desktop.points);
    const DesktopLook look = look_of(desktop.palette, font, desktop.settings);
    EXPECT_EQ(look.dark, desktop.look.dark) << desktop.points;
    EXPECT_DOUBLE_EQ(look.text_scale, desktop.look.text_scale) << desktop.points;
  }
}

struct Quiet : DialogProcedure {
  void handle(Dialog&, const DialogEvent&) override {}
};

TEST(Look, ColorsOfWhatStandsChangeWithTheDesktops) {
  TestWindow test({480, 640});
  QtMenuBar bar(*test.window);
  bar.create(main_menu_bar(Language::english, {}, 27));
  QtDialogs dialogs(*test.window);
  test.show();
  DialogTemplate form = delete_dialog(Language::english, DeleteChoices::two);
  form.controls[1].color = rgb(0, 0, 153);
  Quiet procedure;
  const auto standing = dialogs.open_modeless(form, procedure);
  settle();
  const auto* label = test.window->shell()->findChild<QLabel*>();
  const auto color = [&] { return label->palette().color(QPalette::WindowText); };
  const auto ground = [&] { return test.window->shell()->grab().toImage().pixel(470, 400); };
  EXPECT_FALSE(test.window->screen().dark_desktop);
  EXPECT_EQ(color(), QColor(0, 0, 153));
  EXPECT_EQ(ground(), to_qt(kLightColors.ground));
  test.window->take_look({true, 1});
  settle();
  EXPECT_TRUE(test.window->screen().dark_desktop);
  EXPECT_EQ(dialogs.colors(), static_cast<const FormColors&>(kDarkColors));
  EXPECT_EQ(color(), qt_color(legible_on(kDarkColors.ground, rgb(0, 0, 153))));
  EXPECT_EQ(ground(), to_qt(kDarkColors.ground));
  EXPECT_TRUE(test.recorder.messages.empty()) << "nothing has another size";
  test.window->take_look({false, 1});
  settle();
  EXPECT_EQ(color(), QColor(0, 0, 153)) << "as it was meant";
}

TEST(Look, MenusAndFormsGrowWithTheDesktopsTextsAndViewsDoNot) {
  for (const Size size : {Size{240, 320}, Size{1000, 700}}) {
    TestWindow test(size);
    QtMenuBar bar(*test.window);
    bar.create(main_menu_bar(Language::russian, Image{64, 16, std::vector<Color>(1024)}, 27));
    test.show();
    const auto at_largest = [&] {
      int right = 0;
      for (QWidget* child : test.window->shell()->findChildren<QWidget*>())
        if (dynamic_cast<BarButton*>(child)) {
          EXPECT_GE(child->x(), right) << "beside each other";
          right = child->x() + child->width();
        }
      EXPECT_LE(right, size.width);
    };
    EXPECT_EQ(bar.height(), 27);
    EXPECT_EQ(test.window->screen().form_dpi, 96);
    for (const double wanted : {1.5, 2.0}) {
      test.window->take_look({false, wanted});
      const double scale = size.width > 240 ? wanted : 1;  // a form is 240 wide
      EXPECT_EQ(bar.height(), static_cast<int>(27 * scale + 0.5));
      EXPECT_EQ(test.window->screen().form_dpi, 96 * scale);
      EXPECT_EQ(test.window->screen().dpi_y, 96);
      EXPECT_DOUBLE_EQ(test.window->density().unit(), 1);
      EXPECT_DOUBLE_EQ(test.window->form_density().unit(), scale);
      at_largest();
    }
    const int told = test.recorder.count(kMessageSettingChange);
    EXPECT_EQ(told, size.width > 240 ? 2 : 0) << "views are laid out anew";
  }
}

}  // namespace
}  // namespace orvello
