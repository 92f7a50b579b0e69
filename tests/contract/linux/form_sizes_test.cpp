// The form of every kind on the screens that there are. With ORVELLO_PICTURES=folder it is also
// saved as it looks there, a picture for each place that it is scrolled to.
#include <QAccessible>
#include <cmath>

#include "ports/messages.h"
#include "tests/contract/every_kind.h"
#include "tests/contract/linux/shown_screens.h"

namespace orvello::test {
namespace {

constexpr ShownScreen kLooks[] = {{"little-room", {320, 240}, 96, {false, 1.5}},
                                  {"dark", {240, 320}, 96, {true, 1}},
                                  {"large", {1000, 700}, 96, {true, 1.5}}};

// Each screen, also as some desktops would have it.
std::vector<ShownScreen> screens_and_looks() {
  std::vector<ShownScreen> all(std::begin(kShownScreens), std::end(kShownScreens));
  all.insert(all.end(), std::begin(kLooks), std::end(kLooks));
  return all;
}

// Rows and letters of a form; its rows that are selected are marked, too.
struct Filling {
  const char* name;
  int rows;
  int letters;
};
constexpr Filling kFillings[] = {{"empty", 0, 0}, {"one", 1, 1}, {"full", 60, 200}};

Text words(int letters, int number = 0) {
  Text text;
  while (static_cast<int>(text.size()) < letters) text += u"Встреча gypsy ";
  text.resize(static_cast<std::size_t>(letters));
  if (number > 0 && letters > 1) text.insert(0, to_utf16(std::to_string(number) + " "));
  return text;
}

void fill_report(Dialog& dialog, const Filling& filling, int dpi) {
  ReportContent content;
  content.font.height = 12 * dpi / 96;
  content.bold_font = {content.font.height, 700};
  content.padding = 4 * dpi / 96;
  content.selected_background = rgb(9, 9, 165);
  content.columns = {{0, Align::left, u"Name"}, {0, Align::left, u"Email"}};
  for (int i = 0; i < filling.rows; ++i) {
    ReportRow row;
    row.cells = {words(std::min(filling.letters, 24), i + 1), words(filling.letters / 4)};
    row.height = 26 * dpi / 96;
    row.mark = i % 2 ? ReportMark::set : ReportMark::clear;
    content.rows.push_back(row);
  }
  dialog.report(kReport)->set_content(content);
  if (filling.rows > 0) dialog.report(kReport)->select({0});
}

void fill(Dialog& dialog, const Filling& filling, int dpi) {
  std::vector<Text> rows;
  for (int i = 0; i < filling.rows; ++i)
    rows.push_back(words(filling.letters / (i % 3 + 1), i + 1));
  for (const int choice : {kDropList, kCombo}) {
    dialog.choice(choice)->set_rows(rows);
    dialog.choice(choice)->select(0);
  }
  dialog.list(kList)->set_rows(rows);
  dialog.list(kList)->select({0});
  dialog.list(kMultiList)->set_rows(rows);
  dialog.list(kMultiList)->select({0, 2});
  for (const int text : {kLine, kEdit, kMultiLine}) dialog.set_text(text, words(filling.letters));
  for (const int date : {kDate, kCalendar}) {
    dialog.date(date)->set_calendar({11, 21, 2026}, true);
    dialog.date(date)->set_date({11, 23, 2026});
  }
  dialog.date(kDate)->set_picture(u"MMMM,dd");
  dialog.range(kSlider)->set_position(filling.rows);
  for (const int box : {kCheck, kToggle, kRadioTwo}) dialog.set_checked(box, filling.rows > 0);
  fill_report(dialog, filling, dpi);
  NotesContent notes{words(filling.letters * 3), {}, {}};
  if (filling.rows > 0) notes.text += u"\nbold italic underlined\na bullet\nanother";
  const int styled = static_cast<int>(notes.text.find(u'\n')) + 1;
  if (filling.rows > 0)
    notes.runs = {{styled, 4, {true, false, false, false}},
                  {styled + 5, 6, {false, true, false, false}},
                  {styled + 12, 10, {false, false, true, false}},
                  {styled + 23, 16, {false, false, false, true}}};
  NotesStroke stroke;
  stroke.color = rgb(160, 0, 0);
  for (int i = 0; i < filling.rows * 2; ++i) {
    const auto step = static_cast<float>(i);
    stroke.points.push_back(
        {20 + step * 1.5f, 30 + 12 * std::sin(step / 6), 0.3f + static_cast<float>(i % 40) / 60});
  }
  if (!stroke.points.empty()) notes.strokes = {stroke};
  dialog.notes(kNotes)->set_content(notes);
}

void save_all(QtPerson& person, FormWidget& form, const std::string& name) {
  auto* bar = form.findChild<QScrollArea*>()->verticalScrollBar();
  for (int part = 0;; ++part) {
    save_picture(person, name + "-" + std::to_string(part));
    if (bar->value() == bar->maximum()) break;
    bar->setValue(bar->value() + bar->pageStep());
  }
  bar->setValue(0);
}

class Painter : public RecordingProcedure {
 public:
  void handle(Dialog& dialog, const DialogEvent& event) override {
    RecordingProcedure::handle(dialog, event);
    if (event.kind != DialogEvent::Kind::paint) return;
    event.canvas->fill_rect({0, 0, event.size.width, event.size.height}, rgb(255, 255, 221));
    event.canvas->frame_rect({0, 0, event.size.width, event.size.height}, rgb(153, 153, 153), 1);
  }
};

TEST(FormSizes, EveryControlCanBeReachedAndTappedOnEveryScreen) {
  for (const ShownScreen& screen : screens_and_looks()) {
    for (const Filling& filling : kFillings) {
      SCOPED_TRACE(std::string(screen.name) + " " + filling.name);
      QtPerson person(screen.size, screen.dpi, screen.look);
      Painter told;
      told.act = [&](Dialog& dialog, const DialogEvent& event) {
        if (event.kind == DialogEvent::Kind::init) fill(dialog, filling, screen.dpi);
      };
      const DialogTemplate form = every_kind_form();
      person.in_front([&] {
        auto* shown = person.shell()->findChild<FormWidget*>(QStringLiteral("dialog590"));
        auto* area = shown->findChild<QScrollArea*>();
        EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0) << "nothing beside the form";
        for (const ControlTemplate& control : form.controls) {
          const QWidget* widget = person.find(control.id);
          if (!widget || control.kind == ControlTemplate::Kind::label) continue;
          EXPECT_GE(widget->height(), 26 * screen.dpi / 96 - 1) << control.id;
          auto* heard = QAccessible::queryAccessibleInterface(shown->control(control.id));
          EXPECT_FALSE(heard->text(QAccessible::Name).isEmpty()) << control.id;
        }
        save_all(person, *shown, std::string(screen.name) + "-" + filling.name);
        for (const int drops : {kDropList, kDate}) {
          if (filling.rows == 1) continue;
          person.tap(drops);
          const auto* drop = person.shell()->findChild<QWidget*>(QStringLiteral("drop"));
          ASSERT_NE(drop, nullptr);
          const auto* content = drop->findChild<QWidget*>();
          EXPECT_TRUE(drop->rect().contains(content->geometry())) << "inside the window";
          save_picture(person, std::string(screen.name) + "-" + filling.name + "-drop" +
                                   std::to_string(drops));
          person.key(kKeyEscape, false, false);
        }
      });
      person.dialogs().run_modal(form, told);
    }
  }
}

TEST(FormSizes, TheShownTabIsInSight) {
  for (const ShownScreen& screen : screens_and_looks()) {
    SCOPED_TRACE(screen.name);
    QtPerson person(screen.size, screen.dpi, screen.look);
    const std::vector<DialogTemplate> forms = sheet_pages();
    const Text names[] = {u"Display", u"Options", u"Pretext",  u"Profiles",
                          u"Times",   u"Color",   u"Category", u"Icons"};
    std::vector<SheetPage> pages;
    std::vector<std::unique_ptr<Painter>> procedures;
    for (const Text& name : names) {
      procedures.push_back(std::make_unique<Painter>());
      pages.push_back({forms[pages.size() % forms.size()], procedures.back().get()});
      pages.back().dialog.title = name;
    }
    person.in_front([&] {
      auto* tabs = person.shell()->findChild<QTabBar*>();
      for (int page = 0; page < tabs->count(); ++page) {
        EXPECT_EQ(tabs->currentIndex(), page);
        const QRect tab = tabs->tabRect(page);
        EXPECT_TRUE(tabs->visibleRegion().contains(tab.center()));
        EXPECT_TRUE(tabs->parentWidget()->rect().contains(tab.translated(tabs->pos()))) << page;
        EXPECT_GE(tab.height(), 26 * screen.dpi / 96);
        if (page == 0 || page == 4)
          save_picture(person, std::string(screen.name) + "-sheet" + std::to_string(page));
        // A press on what takes no focus leaves the keys to the sheet.
        person.click(*person.shell()->findChild<QWidget*>(QStringLiteral("sheet")), {4, 4});
        person.key(kKeyPageDown, true, false);
      }
      EXPECT_EQ(tabs->currentIndex(), 0) << "round in a circle";
    });
    person.dialogs().run_sheet(u"Orvello", pages);
  }
}

}  // namespace
}  // namespace orvello::test
