// What a person does with a device's store that fails at any one call: they are told, and nothing
// is changed by half.
#include <algorithm>

#include "calendar/dates.h"
#include "hosts/headless/headless_ports.h"
#include "hosts/headless/headless_window.h"
#include "hosts/headless/memory_files.h"
#include "store/day_agenda.h"
#include "store/item_operations.h"
#include "store/save_appointment.h"
#include "tests/appointments.h"
#include "views/period_query.h"

#include "store/pim/pim_store.h"
#include "tests/store/pim/pim_server.h"

namespace orvello::test {
namespace {

constexpr std::int32_t kWeek = 46202;  // Monday, 29 June 2026
constexpr CalendarDate kSingleAt = kWeek + 0.5;
constexpr CalendarDate kSeriesAt = kWeek + 0.375;

// A session with two appointments: one of an hour, and a weekly series with a moved occurrence and
// a deleted one.
struct Desk {
  explicit Desk(int generation) : store(clock, {generation, {}}) {
    standin().reset();
    standin().set_generation(generation);
    EXPECT_TRUE(session.Open(nullptr));
    fill();
  }

  void fill() {
    AppointmentFields fields;
    fields.subject = u"Single";
    fields.categories = u"Work";
    fields.body = u"notes";
    fields.start = kSingleAt;
    fields.end = kSingleAt + 1 / 24.0;
    const auto item = session.CreateAppointment();
    write_all(*item, fields);
    item->set_recipients({{u"A", u"a@test"}});
    EXPECT_TRUE(item->save());
    single = item->oid();
    const auto made = session.CreateAppointment();
    fields.subject = u"Series";
    write_all(*made, fields);
    RecurrencePattern pattern;
    pattern.type = RecurrenceType::weekly;
    pattern.pattern_start_date = kWeek;
    pattern.day_of_week_mask = 2;
    pattern.start_time = 0.375;
    pattern.end_time = 0.5;
    EXPECT_TRUE(made->pattern()->set_fields(pattern) && made->save());
    series = made->oid();
    const auto one = occurrence(1);
    one->read(fields);
    fields.subject = u"Moved";
    fields.start += 1;
    fields.end += 1;
    write_all(*one, fields);
    EXPECT_TRUE(one->save());
    EXPECT_TRUE(occurrence(2)->remove());
  }
  std::unique_ptr<Appointment> occurrence(int week) {
    OccurrenceError error;
    return session.ItemFromOid(series)->pattern()->occurrence(kSeriesAt + 7 * week, error);
  }
  // Of a failure; there are questions beside.
  bool told() const {
    return boxes.beeps > 0 || std::any_of(boxes.shown.begin(), boxes.shown.end(),
                                          [](auto& box) { return box.caption == u"Error"; });
  }
  // Changes a form as the editor does, and saves it.
  void edit(EditorChoice choice, const std::function<void(AppointmentForm&)>& change) {
    AppointmentForm form;
    form.choice = choice;
    if (choice.oid != 0 && read_appointment(context, form) != FormRead::read) return;
    const AppointmentForm opened = form;
    change(form);
    save_appointment(context, opened, form);
  }

  HeadlessClock clock;
  PimStore store;
  HeadlessBoxes boxes;
  StoreSession session{store, boxes};
  HeadlessWindow window;
  MemoryFiles files;
  EditHistory history{session};
  OperationContext context{session, boxes, window, files, history};
  std::int32_t single = 0, series = 0;
};

// What it answers; nothing: it says that it could not be read. What changes something answers
// nothing of its own.
using Answer = std::optional<std::string>;
struct Doing {
  const char* name;
  std::function<Answer(Desk&)> run;
  bool reads = false;
};

Answer day_agenda(Desk& desk) {
  const auto agenda = full_agenda(desk.session.CalendarItems().get(), Day(kWeek), SettingsRecord(),
                                  [](TextView) { return true; });
  if (agenda.failed) return std::nullopt;
  std::string rows;
  for (const DayRow& row : agenda.rows) rows += to_utf8(row.time + row.icons + row.subject) + "|";
  return rows;
}

Answer month_query(Desk& desk) {
  const auto found = fetch_period([&] { return desk.session.CalendarItems(); },
                                  MonthGridRange(7, 2026, 1, 1), [](TextView) { return true; });
  if (!found) return std::nullopt;
  std::string rows;
  for (const PeriodItem& item : found->items)
    rows += std::to_string(item.start) +
            to_utf8(found->categories[static_cast<std::size_t>(item.categories)]) + "|";
  return rows;
}

const Doing kDoings[] = {
    {"day agenda", day_agenda, true},
    {"month query", month_query, true},
    {"beam",
     [](Desk& desk) {
       const auto item = desk.session.ItemFromOid(desk.single);
       return item && desk.session.BeamToInfrared(*item) ? Answer("") : std::nullopt;
     },
     true},
    {"create",
     [](Desk& desk) {
       desk.edit({}, [](AppointmentForm& form) {
         form.subject = u"New";
         form.start_date = form.end_date = kWeek + 3;
         form.start_time = 0.5;
         form.end_time = 0.625;
         form.attendees = {{u"B", u"b@test"}};
         form.body = u"words";
       });
       return Answer("");
     }},
    {"edit",
     [](Desk& desk) {
       desk.edit({desk.single}, [](AppointmentForm& form) {
         form.subject = u"Renamed";
         form.start_date = form.end_date = kWeek + 1;
         form.attendees.push_back({u"B", u"b@test"});
         form.ink = "ink";
       });
       return Answer("");
     }},
    {"edit the series",
     [](Desk& desk) {
       desk.edit({desk.series}, [](AppointmentForm& form) {
         form.subject = u"Renamed";
         form.start_time += 1 / 24.0;
         form.end_time += 1 / 24.0;
         form.pattern.start_time = form.start_time;
         form.pattern.end_time = form.end_time;
       });
       return Answer("");
     }},
    {"make one of the series",
     [](Desk& desk) {
       desk.edit({desk.series}, [](AppointmentForm& form) { form.recurring = false; });
       return Answer("");
     }},
    {"edit an occurrence",
     [](Desk& desk) {
       desk.edit({desk.series, kSeriesAt + 21, EditScope::occurrence},
                 [](AppointmentForm& form) { form.location = u"Hall"; });
       return Answer("");
     }},
    {"copy",
     [](Desk& desk) {
       copy_appointment(desk.context, desk.single, kSingleAt, Day(kWeek + 4));
       return Answer("");
     }},
    {"move",
     [](Desk& desk) {
       move_appointment(desk.context, desk.single, kSingleAt, Day(kWeek + 4));
       return Answer("");
     }},
    {"move an occurrence",
     [](Desk& desk) {
       move_appointment(desk.context, desk.series, kSeriesAt + 21, Day(kWeek + 23));
       return Answer("");
     }},
    {"delete",
     [](Desk& desk) {
       delete_appointment(desk.context, desk.single, kDeleteSeries, kSingleAt);
       return Answer("");
     }},
    {"delete an occurrence",
     [](Desk& desk) {
       delete_appointment(desk.context, desk.series, kDeleteOccurrence, kSeriesAt + 21);
       return Answer("");
     }},
    {"delete what follows",
     [](Desk& desk) {
       delete_appointment(desk.context, desk.series, kDeleteFollowing, kSeriesAt + 21);
       return Answer("");
     }},
};

class PimFailingCalls : public testing::TestWithParam<int> {};

TEST_P(PimFailingCalls, AreToldAndChangeNothingByHalf) {
  for (const Doing& doing : kDoings) {
    Answer expected;
    std::string words;
    unsigned long long before = 0, whole = 0;
    bool told = false, reached = false;
    // First without a failure, then at each call; later ones in steps, as they are much alike.
    for (int number = 0;; number += number < 60 ? 1 : 7) {
      SCOPED_TRACE(std::string(doing.name) + " " + std::to_string(number));
      Answer answer;
      {
        Desk desk(GetParam());
        before = standin().fingerprint();
        standin().answer_exceptions(number % 2 == 1);
        standin().fail_call(number, E_FAIL);
        answer = doing.run(desk);
        told = desk.told() || !answer;
        reached = standin().reached();
        words.clear();
        for (const ShownBox& box : desk.boxes.shown)
          words += to_utf8(box.caption + u"|" + box.text) + "\n";
        standin().fail_call(0, S_OK);
      }
      const auto after = standin().fingerprint();
      if (number == 0) {
        ASSERT_FALSE(told) << words;
        expected = answer;
        whole = after;
        ASSERT_EQ(whole == before, doing.reads);
        continue;
      }
      if (!reached) break;
      EXPECT_EQ(answer.value_or(*expected), *expected);
      // The rest is saved where the notes cannot be, and stays so where nobody could be informed.
      const bool without_notes = words.find("BodyInk") != std::string::npos;
      const bool kept = !told || words.find("not informed") != std::string::npos;
      const bool right = without_notes ? after != before : after == (kept ? whole : before);
      EXPECT_TRUE(right) << (told ? "told, " : "done, ") << standin().report() << words;
      EXPECT_EQ(standin().references(), 0) << standin().report();
      EXPECT_EQ(standin().strings(), 0) << standin().report();
      EXPECT_EQ(standin().faults(), 0) << standin().report();
      if (!right) break;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Generation, PimFailingCalls, testing::Values(2, 3));

}  // namespace
}  // namespace orvello::test
