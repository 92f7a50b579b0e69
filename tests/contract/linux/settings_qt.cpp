// The settings sheet's contract on real widgets, and its first pages on the screens that there are.
// With ORVELLO_PICTURES=folder they are also saved as they look there.
#include <algorithm>

#include "ports/messages.h"
#include "resources/settings_templates.h"
#include "tests/contract/linux/shown_screens.h"
// The suites themselves, as this is another test program.
#include "tests/contract/settings_bad_contract.cpp"       // NOLINT
#include "tests/contract/settings_category_contract.cpp"  // NOLINT
#include "tests/contract/settings_color_contract.cpp"     // NOLINT
#include "tests/contract/settings_contract.cpp"           // NOLINT
#include "tests/contract/settings_desk.cpp"               // NOLINT
#include "tests/contract/settings_display_contract.cpp"   // NOLINT
#include "tests/contract/settings_lists_contract.cpp"     // NOLINT
#include "tests/contract/settings_options_contract.cpp"   // NOLINT

namespace orvello::test {
namespace {

INSTANTIATE_TEST_SUITE_P(Qt, SettingsContract,
                         testing::Values(MakeBench([] { return std::make_unique<QtPerson>(); })));

// The pages by the keyboard alone: all that can be touched, one after the other, and in sight.
struct SheetWalk {
  SheetWalk(const ShownScreen& at, bool russian) : screen(at), name(at.name_in(russian)) {
    auto made = std::make_unique<QtPerson>(at.size, at.dpi);
    person = made.get();
    desk = std::make_unique<SettingsDesk>(std::move(made), russian);
    desk->screen = layout_screen(at.size, at.dpi, at.dpi, false);
  }
  void save(const std::string& what) { save_picture(*person, "settings-" + name + what); }
  // The text stands whole in its control, also in a narrow column.
  void expect_whole(const ControlTemplate& control) {
    const QWidget* widget = person->find(control.id);
    const bool box = control.kind == ControlTemplate::Kind::check_box;
    if (!widget || (!box && control.kind != ControlTemplate::Kind::label)) return;
    const int width = widget->width() - (box ? 21 * screen.dpi / 96 : 0);
    const QSize needed =
        QFontMetrics(widget->font())
            .boundingRect(QRect(0, 0, width, 10000), Qt::TextWordWrap, to_qt(control.text))
            .size();
    EXPECT_LE(needed.width(), width) << control.id;
    EXPECT_LE(needed.height(), widget->height()) << control.id;
  }
  void walk(const DialogTemplate& page) {
    SCOPED_TRACE(page.id);
    auto* form = person->shell()->findChild<FormWidget*>(QStringLiteral("dialog%1").arg(page.id));
    auto* area = form->findChild<QScrollArea*>();
    EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0);
    save("-" + std::to_string(page.id));
    for (const ControlTemplate& control : page.controls) expect_whole(control);
    std::vector<int> expected, walked;
    for (const ControlTemplate& control : page.controls)
      if (control.kind != ControlTemplate::Kind::label &&
          control.kind != ControlTemplate::Kind::custom && person->seen(control.id))
        expected.push_back(control.id);
    for (std::size_t i = 0; i <= page.controls.size(); ++i) {
      const int at = person->focused();
      if (at == 0 || std::find(walked.begin(), walked.end(), at) != walked.end()) break;
      walked.push_back(at);
      const QWidget* widget = person->find(at);
      const QRect place(widget->mapTo(area->viewport(), QPoint()), widget->size());
      EXPECT_TRUE(area->viewport()->rect().contains(place))
          << at << " at " << place.y() << " of " << area->viewport()->height();
      EXPECT_GE(place.height(), 26 * screen.dpi / 96) << at;
      const auto* button = qobject_cast<const QAbstractButton*>(widget);
      EXPECT_NE(button ? button->text() : widget->accessibleName(), QString()) << at;
      if (walked.size() == expected.size()) save("-" + std::to_string(page.id) + "-end");
      person->tab(false);
    }
    EXPECT_EQ(walked, expected);
  }

  ShownScreen screen;
  std::string name;
  QtPerson* person;
  std::unique_ptr<SettingsDesk> desk;
};

TEST(SettingsSizes, TheFirstPagesGoByKeysOnEveryScreen) {
  on_all_screens([](const ShownScreen& screen, bool russian) {
    SheetWalk at(screen, russian);
    const auto pages = settings_pages(language_of(at.desk->locale));
    EXPECT_EQ(at.desk->open(kPageDisplay,
                            [&] {
                              at.person->key(kKeyDown, false, false);  // the size of letters
                              at.person->tab(false);
                              at.person->key(kKeySpace, false, false);  // the location
                              at.person->tab(true);
                              at.walk(pages[kPageDisplay]);
                              at.person->key(kKeyPageDown, true, false);
                              at.walk(pages[kPageOptions]);
                              at.person->show_page(kPageDisplay);
                              at.person->show_page(kPageOptions);
                              at.desk->choose(kOptionsMonthColors, 1);
                              at.desk->choose(kOptionsWeekNumber, 2);
                              at.save("-week-one");
                              at.desk->dialog().focus(kOptionsDefault);
                              at.person->key(kKeyReturn, false, false);
                            }),
              kSheetOk);
    EXPECT_EQ(at.desk->number(u"dvfontsize"), 13);
    EXPECT_EQ(at.desk->number(u"showlocation"), 1);
    EXPECT_EQ(at.desk->number(u"weeknumberformat"), 2);
  });
}

}  // namespace
}  // namespace orvello::test
