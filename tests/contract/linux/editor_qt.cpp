// The editor's contract on real widgets, and its form on the screens that there are. With
// ORVELLO_PICTURES=folder the form is also saved as it looks there.
#include "calendar/dates.h"
#include "ports/messages.h"
#include "resources/editor_ids.h"
#include "settings/pretexts.h"
#include "tests/contract/linux/shown_screens.h"
// The suite itself, as this is another test program.
#include "tests/contract/companions_contract.cpp"   // NOLINT
#include "tests/contract/editor_contract.cpp"       // NOLINT
#include "tests/contract/editor_desk.cpp"           // NOLINT
#include "tests/contract/editor_runs_contract.cpp"  // NOLINT
#include "tests/contract/watched_dialogs.cpp"       // NOLINT

namespace orvello::test {
namespace {

INSTANTIATE_TEST_SUITE_P(Qt, EditorContract,
                         testing::Values(MakeBench([] { return std::make_unique<QtPerson>(); })));

// A form whose texts are as long as they get, or one as it opens.
void write_form(EditorDesk& desk, bool full) {
  if (!full) return;
  desk.settings.defremindme = 1;
  desk.settings.strdefcategory = u"Geschäftsreise nach Wien,Familie,Reisekosten";
  Text subject;
  while (subject.size() < 200) subject += u"Встреча gypsy ";
  for (int i = 0; i < 60; ++i)
    savePreTextToDB(desk.volume,
                    cut(subject, static_cast<std::size_t>(3 * i + 5)) + to_utf16(std::to_string(i)),
                    kSubjectPretexts);
  savePreTextToDB(desk.volume, u"Конференц-зал на четвёртом этаже", kLocationPretexts);
}

TEST(EditorSizes, EveryLineCanBeEditedOnEveryScreen) {
  on_all_screens([](const ShownScreen& screen, bool russian) {
    for (const bool full : {false, true}) {
      const std::string name = screen.name_in(russian) + (full ? "-full" : "-empty");
      auto made = std::make_unique<QtPerson>(screen.size, screen.dpi);
      QtPerson& person = *made;
      EditorDesk desk(std::move(made), russian);
      desk.screen = layout_screen(screen.size, screen.dpi, screen.dpi, false);
      desk.settings.timeformat = russian ? 1 : 0;
      write_form(desk, full);
      desk.meet([&] {
        auto* form = person.shell()->findChild<FormWidget*>(QStringLiteral("dialog116"));
        EXPECT_EQ(form->findChild<QScrollArea*>()->horizontalScrollBar()->maximum(), 0);
        if (full) desk.choose(kLineSubject, 40);
        desk.tap(kEditorPrivate);
        save_picture(person, "editor-" + name);
        for (const EditorLine& line : kEditorLines) {
          const auto* shown = form->control(line.line);
          EXPECT_NE(shown->accessibleName(), form->title()) << line.line;
          if (line.edit == 0 || !desk.bench->seen(line.line)) continue;
          EXPECT_EQ(person.find(line.line)->accessibleName(), shown->accessibleName());
          desk.tap(line.line);
          EXPECT_TRUE(desk.bench->seen(line.edit)) << line.edit;
          EXPECT_EQ(desk.bench->dropped_down() == line.edit, line.kind == EditorLine::Kind::list)
              << line.edit;
          save_picture(person, "editor-" + name + "-" + std::to_string(line.edit));
          if (desk.bench->dropped_down() != 0) desk.bench->key(kKeyEscape);
          desk.bench->key(kKeyEscape);
          EXPECT_TRUE(desk.bench->seen(line.line)) << line.line;
        }
        auto* bar = form->findChild<QScrollArea*>()->verticalScrollBar();
        if (bar->maximum() > 0) {
          bar->setValue(bar->maximum());
          save_picture(person, "editor-" + name + "-end");
        }
        desk.choose(kLineOccurs, 1);
        save_picture(person, "editor-" + name + "-weekly");
        desk.tap(kEditorAllDay);
        save_picture(person, "editor-" + name + "-allday");
        desk.tap(kEditorNotes);
        save_picture(person, "editor-" + name + "-notes");
        desk.tap(kEditorCancel);
      });
      desk.open({});
    }
  });
}

}  // namespace
}  // namespace orvello::test
