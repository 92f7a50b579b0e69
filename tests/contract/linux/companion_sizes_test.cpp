// The recurrence editor and the chooser on the screens that there are: nothing of them has to be
// scrolled to. With ORVELLO_PICTURES=folder they are also saved as they look there.
#include "editor/chooser.h"
#include "editor/edit_recurrence.h"
#include "resources/chooser_ids.h"
#include "resources/recurrence_ids.h"
#include "settings/category_list.h"
#include "settings/registry_access.h"
#include "tests/contract/editor_contract.h"
#include "tests/contract/linux/shown_screens.h"

namespace orvello::test {
namespace {

// What a form is in: below it stands the menu bar.
class CompanionDesk {
 public:
  CompanionDesk(const ShownScreen& screen, bool russian) : name_(screen.name_in(russian) + "-") {
    const Size room{screen.size.width, screen.size.height - 26 * screen.dpi / 96};
    auto made = std::make_unique<QtPerson>(room, screen.dpi);
    person = made.get();
    desk = std::make_unique<EditorDesk>(std::move(made), russian);
    desk->screen = layout_screen(room, screen.dpi, screen.dpi, false);
    desk->settings.timeformat = russian ? 1 : 0;
  }
  void look(const std::string& what) { expect_seen_whole(*person, name_ + what); }

  QtPerson* person;
  std::unique_ptr<EditorDesk> desk;

 private:
  std::string name_;
};

TEST(CompanionSizes, EachStepOfTheRecurrenceEditorIsSeenWhole) {
  on_all_screens([](const ShownScreen& screen, bool russian) {
    CompanionDesk at(screen, russian);
    for (int kind = 0; kind < 4; ++kind) {
      RecurrencePattern pattern;
      pattern.type = kind == 3 ? RecurrenceType::yearly : RecurrenceType::weekly;
      pattern.pattern_start_date = calendar_date_of({9, 30, 2026});
      pattern.day_of_week_mask = 8;
      pattern.month_of_year = 9;
      pattern.day_of_month = 30;
      pattern.interval = 2;
      at.person->in_front([&] {
        if (kind == 0) at.look("times");
        at.person->tap_row(kControlRecurrenceType, kind);
        at.person->tap(kControlNextStep);
        at.look("page" + std::to_string(kind));
        at.person->tap(kControlNextStep);
        if (kind == 0) at.look("range");
        at.person->tap(kControlDone);
      });
      EXPECT_TRUE(edit_recurrence(at.desk->here, pattern, false));
    }
  });
}

TEST(CompanionSizes, TheChooserShowsItsBarsAndSomeRows) {
  on_all_screens([](const ShownScreen& screen, bool russian) {
    CompanionDesk at(screen, russian);
    at.desk->device.databases.create(kObjectStore, kCategoriesDatabase, 0);
    for (int count : {0, 1, 60}) {
      for (int i = 0; i < count; ++i) {
        addCategory(at.desk->volume, format(russian ? u"Категория %d" : u"gypsy %d", i));
        at.desk->device.store.put_contact({0,
                                           format(u"%.2d", i),
                                           i == 7 ? Text(200, u'x') : u"Ann",
                                           {},
                                           format(u"Name %d", i),
                                           u"Acme Incorporated",
                                           {format(u"ann%d@example.org", i), u"a@example.com"},
                                           {}});
      }
      for (const bool bars : {false, true}) {
        for (const TextView setting : {u"abcbarshow", u"adddeletebarshow"})
          WriteNumberSetting(at.desk->device.registry, setting, bars);
        const std::string what = std::to_string(count) + (bars ? "-bars" : "");
        const auto look_at = [&](const std::string& mode) {
          return [&at, mode, what] {
            at.look(mode + what);
            const Dialog& dialog = at.desk->dialog();
            EXPECT_GE(dialog.place(kControlChooserList).height, 2 * 27) << mode << what;
          };
        };
        Text categories = count == 0 ? u"" : u"Zoo";
        at.person->in_front(look_at("labels"));
        choose_categories(at.desk->here, categories);
        std::vector<StoreRecipient> attendees;
        at.person->in_front(look_at("people"));
        choose_attendees(at.desk->here, attendees);
      }
    }
  });
}

}  // namespace
}  // namespace orvello::test
