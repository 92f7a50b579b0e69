// What the store in memory does only when it is told to: fail in the ways that a device's own store
// can, be of another platform, keep less, and count what it is asked.
#include <gtest/gtest.h>

#include <utility>

#include "calendar/dates.h"
#include "calendar/month_grid_range.h"
#include "hosts/headless/headless_ports.h"
#include "hosts/headless/memory_store.h"
#include "store/contact_list.h"
#include "store/day_agenda.h"
#include "store/store_session.h"
#include "tests/appointments.h"
#include "tests/contract/calendar_store_contract.h"
#include "views/period_query.h"

namespace orvello::test {
namespace {

using Field = AppointmentField;
constexpr std::int32_t kDay = 46205;

class StoreOnDemand : public testing::Test {
 protected:
  StoreOnDemand() { EXPECT_TRUE(session.Open(nullptr)); }

  std::unique_ptr<Appointment> saved(AppointmentFields fields) {
    auto item = session.CreateAppointment();
    write_all(*item, fields);
    EXPECT_TRUE(item->save());
    return item;
  }

  TestClock clock;
  MemoryStore store{clock};
  HeadlessBoxes boxes;
  StoreSession session{store, boxes};
};

TEST_F(StoreOnDemand, InkIsRefusedApartFromTheRest) {
  auto item = saved({});
  store.faults.ink = true;
  AppointmentFields fields;
  fields.subject = u"subject";
  fields.body = u"words";
  fields.body_ink = "ink";
  EXPECT_EQ(item->write(fields, {Field::subject, Field::ink}), AppointmentFieldSet{Field::ink});
  ASSERT_TRUE(item->save());
  session.ItemFromOid(item->oid())->read(fields);
  EXPECT_EQ(fields.subject, u"subject");
  EXPECT_EQ(to_utf8(fields.body) + fields.body_ink, "");
}

TEST_F(StoreOnDemand, StatesAndContactsFailAndSaySo) {
  const auto item = saved({});
  const auto state = item->state();
  ASSERT_TRUE(state);
  store.faults.state = true;
  EXPECT_FALSE(item->state());
  EXPECT_TRUE(session.problem().empty()) << "no failure, it has none to give";
  EXPECT_FALSE(session.app()->restore(*state));
  store.faults.contacts = true;
  store.faults.reason = "The contacts are locked.";
  EXPECT_FALSE(sorted_contacts(*session.folder(kFolderContacts), HeadlessLocale()));
  EXPECT_EQ(session.problem(), u"The contacts are locked.");
}

TEST_F(StoreOnDemand, APatternThatOutlivesItsItemIsCounted) {
  auto item = saved({});
  auto pattern = item->pattern();
  item.reset();
  EXPECT_EQ(std::exchange(store.late_patterns, 0), 1);
  pattern.reset();
}

// One platform ends all-day items at 23:59, another at the midnight after: who reads and shows them
// above the port sees the same days.
TEST_F(StoreOnDemand, AllDayItemsCoverTheSameDaysInEitherForm) {
  for (const AllDayEnd form : {AllDayEnd::on_last_day, AllDayEnd::next_midnight}) {
    store.all_day_form = form;
    AppointmentFields fields;
    fields.subject = u"trip";
    fields.all_day = true;
    fields.start = kDay;
    fields.end = stored_end(kDay + 1, form);
    const auto item = saved(fields);
    session.ItemFromOid(item->oid())->read(fields);
    EXPECT_DOUBLE_EQ(fields.end,
                     form == AllDayEnd::next_midnight ? kDay + 2 : kDay + 1 + 1439 / 1440.0);
    const CalendarDate last = own_end(fields.start, fields.end, form);
    EXPECT_DOUBLE_EQ(last, kDay + 1 + 1439 / 1440.0);
    EXPECT_TRUE(each_item(*session.CalendarItems(), u"",
                          [&](const StoreItem& found) { EXPECT_DOUBLE_EQ(found.end, last); }));
    EXPECT_DOUBLE_EQ(own_end(kDay, kDay, form), kDay + 1439 / 1440.0) << "never before it begins";
    ASSERT_TRUE(item->remove());
  }
}

// Of a store of objects each property is a call.
TEST_F(StoreOnDemand, ViewsReadOnlyWhatTheyShow) {
  AppointmentFields fields;
  fields.start = kDay + 0.5;
  fields.end = kDay + 0.75;
  fields.body = Text(1000, u'n');
  for (int i = 0; i < 10; ++i) saved(fields);
  const auto source = [&] { return session.CalendarItems(); };
  const auto everyone = [](TextView) { return true; };
  SettingsRecord settings;
  store.properties = 0;
  ASSERT_FALSE(full_agenda(source().get(), Day(kDay), settings, everyone).failed);
  EXPECT_EQ(store.properties, 10 * 10);
  store.properties = 0;
  ASSERT_TRUE(compact_agenda(source().get(), Day(kDay), true, everyone));
  EXPECT_EQ(store.properties, 10 * 7);
  // A month: start, end, id, all-day, recurring, and what bars are coloured by.
  store.properties = 0;
  ASSERT_TRUE(fetch_period(source, MonthGridRange(7, 2026, 0, 0), everyone));
  EXPECT_EQ(store.properties, 10 * 7);
}

// Whatever write or read of it fails, a series is divided whole or not at all.
TEST_F(StoreOnDemand, NoHalfOfADivisionIsLeft) {
  AppointmentFields fields;
  fields.subject = u"s";
  const auto item = saved(fields);
  ASSERT_TRUE(item->pattern()->set_fields(weekly(kDay, 1 << 4, 9)));
  ASSERT_TRUE(item->save());
  const auto before = item->state();
  bool done = false;
  for (int call = 1; !done; ++call) {
    SCOPED_TRACE(call);
    OccurrenceError error;
    const auto rest = item->pattern()->following(kDay + 14.375, error);
    fields.subject = u"new";
    ASSERT_TRUE(rest->write(fields, {Field::subject}).empty());
    store.faults.call = call;
    done = rest->save();
    const bool reached = std::exchange(store.faults.call, 0) == 0;
    EXPECT_EQ(done, !reached);
    EXPECT_EQ(store.contents().records.size(), done ? 2u : 1u);
    EXPECT_EQ(item->state()->same_as(*before), !done);
    ASSERT_LT(call, 60);
  }
}

// Zones and what a file said are not every store's: times are right all the same.
TEST_F(StoreOnDemand, AStoreWithoutZonesKeepsTheDevicesTimes) {
  store.keeps_all = false;
  ASSERT_TRUE(store.put_zone(new_york()));
  AppointmentRecord record;
  record.zone = "America/New_York";
  record.start = midnight_of(Day(kDay)) + 20 * 3600;
  record.end = record.start + 3600;
  record.residue = "X-A:b";
  record.pattern = weekly(kDay, 1 << 4, 3);
  record.pattern->start_time = 20 / 24.0;
  record.pattern->end_time = 21 / 24.0;
  AppointmentException gone;
  gone.deleted = true;
  gone.original_start = record.start + 7 * kSecondsPerDay;
  gone.residue = "X-B:c";
  record.exceptions = {gone};
  const auto oid = store.put(record);
  ASSERT_NE(oid, 0) << store.problem();
  const auto kept = **store.load(oid);
  EXPECT_EQ(kept.zone + kept.residue + kept.exceptions[0].residue, "");
  EXPECT_EQ(kept.pattern->day_of_week_mask, 1 << 5);
  std::vector<CalendarDate> starts;
  const auto items = session.CalendarItems();
  items->set_include_recurrences(true);
  ASSERT_TRUE(each_item(*items, u"", [&](const StoreItem& item) { starts.push_back(item.start); }));
  EXPECT_EQ(starts, (std::vector<CalendarDate>{kDay + 1.125, kDay + 15.125}));
  record.pattern->type = RecurrenceType::month_nth;
  EXPECT_EQ(store.put(record), 0) << "no pattern holds the days after a month's first Thursday";
  EXPECT_FALSE(store.problem().empty());
  ASSERT_TRUE(store.put_foreign({"key", "text"}));
  EXPECT_TRUE(store.foreign()->empty());
}

}  // namespace
}  // namespace orvello::test
