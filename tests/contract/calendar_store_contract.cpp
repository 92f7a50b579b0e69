#include "tests/contract/calendar_store_contract.h"

#include <cstdio>

#include "base/text.h"

namespace orvello::test {
namespace {

constexpr UtcSeconds kForward{(46110LL * 24 + 1) * 3600};   // 29 March 2026, 01:00 UTC
constexpr UtcSeconds kBackward{(46320LL * 24 + 1) * 3600};  // 25 October 2026, 01:00 UTC

}  // namespace

SystemTime TestClock::local_time() const { return civil_of(day_of(to_local(now))); }

LocalSeconds TestClock::to_local(UtcSeconds utc) const {
  if (zone != "Europe/Berlin") return local_at_offset(utc, offset);
  return local_at_offset(utc, utc >= kForward && utc < kBackward ? 7200 : 3600);
}

UtcSeconds TestClock::to_utc(LocalSeconds local) const {
  if (zone != "Europe/Berlin") return utc_at_offset(local, offset);
  const UtcSeconds summer = utc_at_offset(local, 7200);
  return summer >= kForward && summer < kBackward ? summer : utc_at_offset(local, 3600);
}

void CalendarStoreContract::SetUp() {
  store_ = GetParam().make(clock_);
  ASSERT_TRUE(store_);
  app_ = store_->create_application(false);
  ASSERT_TRUE(app_ && app_->logon(nullptr));
}

std::int32_t CalendarStoreContract::add(TextView subject, CalendarDate start, CalendarDate end,
                                        bool all_day) {
  auto item = app_->create_appointment();
  AppointmentFields fields;
  item->read(fields);
  fields.subject = subject;
  fields.start = start;
  fields.end = all_day ? stored_end(end, app_->all_day_end()) : end;
  fields.all_day = all_day;
  write_all(*item, fields);
  EXPECT_TRUE(item->save());
  return item->oid();
}

std::int32_t CalendarStoreContract::add_series(TextView subject, const RecurrencePattern& pattern) {
  auto item = app_->create_appointment();
  AppointmentFields fields;
  item->read(fields);
  fields.subject = subject;
  write_all(*item, fields);
  EXPECT_TRUE(item->pattern()->set_fields(pattern));
  EXPECT_TRUE(item->save());
  return item->oid();
}

std::vector<std::string> CalendarStoreContract::found(const Text& restriction, bool occurrences) {
  auto items = app_->default_folder(kFolderCalendar)->items();
  items->set_include_recurrences(occurrences);
  items->sort(u"[Start]", false);
  std::vector<std::string> list;
  EXPECT_TRUE(each_item(*items, restriction, [&](const StoreItem& item) {
    char times[64];
    std::snprintf(times, sizeof times, " %.10g-%.10g", item.start, item.end);
    list.push_back(to_utf8(item.summary->subject) + times);
  }));
  // Both ways of asking must agree.
  std::size_t at = 0;
  EXPECT_TRUE(each_item(items->restrict_to(restriction).get(), [&](const StoreItem& item) {
    const std::string subject = at < list.size() ? list[at].substr(0, list[at].rfind(' ')) : "";
    EXPECT_EQ(to_utf8(item.summary->subject), subject);
    ++at;
  }));
  EXPECT_EQ(at, list.size());
  return list;
}

std::vector<std::string> CalendarStoreContract::on(std::int32_t day) {
  return found(format(u"[End] >= <%d AND [Start] <= <%d", day, day));
}

RecurrencePattern weekly(std::int32_t day, int mask, int occurrences) {
  RecurrencePattern pattern;
  pattern.type = RecurrenceType::weekly;
  pattern.pattern_start_date = day;
  pattern.day_of_week_mask = mask;
  pattern.start_time = 0.375;
  pattern.end_time = 0.375 + 1 / 24.0;
  if (occurrences > 0) {
    pattern.no_end_date = false;
    pattern.occurrences = occurrences;
  }
  return pattern;
}

Zone new_york() { return Zone("America/New_York", {{{}, -5 * 3600, -5 * 3600, std::nullopt, {}}}); }

using Strings = std::vector<std::string>;

TEST_P(CalendarStoreContract, BoundsAreWholeDays) {
  add(u"before", 46199.9, 46199.95);
  add(u"late", 46200 + 0.75, 46200 + 0.875);
  add(u"midnight", 46199.5, 46200);
  add(u"across", 46190.5, 46300.5);
  add(u"after", 46201, 46201.25);
  EXPECT_EQ(on(46200), (Strings{"across 46190.5-46300.5", "midnight 46199.5-46200",
                                "late 46200.75-46200.875"}));
  EXPECT_EQ(found(u"[End] >  <46200 AND [Start] <  <46201"), (Strings{"across 46190.5-46300.5"}));
  EXPECT_TRUE(found(u"[Subject] = 'late'").empty());
  EXPECT_TRUE(found(u"[Start] >= <46202 AND [Start] <= <46200").empty());
}

TEST_P(CalendarStoreContract, SortsByStartThenEndThenOid) {
  add(u"c", 46200.5, 46200.75);
  add(u"b", 46200.5, 46200.625);
  add(u"d", 46200.5, 46200.75);
  add(u"a", 46200.25, 46200.875);
  EXPECT_EQ(on(46200), (Strings{"a 46200.25-46200.875", "b 46200.5-46200.625", "c 46200.5-46200.75",
                                "d 46200.5-46200.75"}));
}

TEST_P(CalendarStoreContract, SeriesShowEachOccurrenceOnlyWhenAsked) {
  add_series(u"w", weekly(46202, 1 << 4, 3));  // Thursdays from Monday 29 June 2026
  EXPECT_EQ(
      found(u"[Start] >= <46190"),
      (Strings{"w 46205.375-46205.41667", "w 46212.375-46212.41667", "w 46219.375-46219.41667"}));
  EXPECT_EQ(found(u"", false), (Strings{"w 46205.375-46205.41667"}));
}

TEST_P(CalendarStoreContract, OccurrencesAreChangedMovedAndRemoved) {
  const auto oid = add_series(u"w", weekly(46205, 1 << 4));
  auto item = app_->item_from_oid(oid);
  auto pattern = item->pattern();
  OccurrenceError error;
  auto moved = pattern->occurrence(46212.375, error);
  ASSERT_TRUE(moved);
  AppointmentFields fields;
  moved->read(fields);
  EXPECT_EQ(fields.start, 46212.375);
  fields.subject = u"moved";
  fields.start = 46215.5;
  fields.end = 46215.75;
  write_all(*moved, fields);
  ASSERT_TRUE(moved->save());
  ASSERT_TRUE(pattern->occurrence(46219.375, error)->remove());
  ASSERT_TRUE(item->save());  // takes no exception back

  EXPECT_EQ(
      found(u"[Start] >= <46205 AND [Start] <= <46226"),
      (Strings{"w 46205.375-46205.41667", "moved 46215.5-46215.75", "w 46226.375-46226.41667"}));
  EXPECT_EQ(on(46215), (Strings{"moved 46215.5-46215.75"}));
  EXPECT_TRUE(on(46212).empty());
  ASSERT_EQ(pattern->exception_count(), 2);
  EXPECT_EQ(pattern->exception(1)->original_start, 46212.375);
  EXPECT_EQ(pattern->exception(1)->start, 46215.5);
  EXPECT_TRUE(pattern->exception(2)->deleted);
  EXPECT_FALSE(pattern->exception(3));

  // Found at its moved time only; the removed one not at all.
  EXPECT_TRUE(pattern->occurrence(46215.5, error));
  EXPECT_FALSE(pattern->occurrence(46212.375, error));
  EXPECT_EQ(error, OccurrenceError::not_found);
  EXPECT_FALSE(pattern->occurrence(46219.375, error));
  EXPECT_FALSE(pattern->occurrence(kNoDate, error));
  EXPECT_EQ(error, OccurrenceError::invalid_argument);
}

TEST_P(CalendarStoreContract, ASeriesFiledAnewTakesItsChangedOccurrencesAlong) {
  const auto oid = add_series(u"w", weekly(46205, 1 << 4));
  const auto file = [](Appointment& item, TextView categories) {
    AppointmentFields fields;
    item.read(fields);
    fields.categories = categories;
    write_all(item, fields);
    ASSERT_TRUE(item.save());
  };
  OccurrenceError error;
  const auto occurrence = [&](double start) {
    return app_->item_from_oid(oid)->pattern()->occurrence(start, error);
  };
  file(*app_->item_from_oid(oid), u"Old");
  file(*occurrence(46212.375), u"Old");  // changed, if only in what it says already
  file(*occurrence(46219.375), u"Mine");
  file(*app_->item_from_oid(oid), u"New");
  const Text own = traits().rich_occurrences ? u"Mine" : u"New";
  for (const auto& [start, categories] : {std::pair(46212.375, Text(u"New")), {46219.375, own}}) {
    AppointmentFields fields;
    occurrence(start)->read(fields);
    EXPECT_EQ(fields.categories, categories);
  }
}

TEST_P(CalendarStoreContract, ANewPatternDropsExceptionsAndTheSameOneKeepsThem) {
  const auto oid = add_series(u"w", weekly(46205, 1 << 4));
  OccurrenceError error;
  auto item = app_->item_from_oid(oid);
  ASSERT_TRUE(item->pattern()->occurrence(46212.375, error)->remove());
  item->pattern()->set_fields(**item->pattern()->fields());
  ASSERT_TRUE(item->save());
  EXPECT_EQ(item->pattern()->exception_count(), 1);
  item->pattern()->set_fields(weekly(46206, 1 << 5));
  ASSERT_TRUE(item->save());
  EXPECT_EQ(item->pattern()->exception_count(), 0);
  EXPECT_EQ(on(46206), (Strings{"w 46206.375-46206.41667"}));
  EXPECT_TRUE(on(46205).empty());
}

TEST_P(CalendarStoreContract, ClearingThePatternLeavesOneAppointment) {
  const auto oid = add_series(u"w", weekly(46205, 1 << 4));
  auto item = app_->item_from_oid(oid);
  EXPECT_TRUE(item->is_recurring());
  item->clear_pattern();
  ASSERT_TRUE(item->save());
  EXPECT_FALSE(app_->item_from_oid(oid)->is_recurring());
  EXPECT_EQ(found(u""), (Strings{"w 46205.375-46205.41667"}));
}

TEST_P(CalendarStoreContract, AllDayItemsKeepTheirDays) {
  add(u"a", 46200, 46201.5, true);
  EXPECT_EQ(on(46201), (Strings{"a 46200-46201.99931"}));
  clock_.zone = "Far/Away";
  clock_.offset = -11 * 3600;
  EXPECT_EQ(on(46200), (Strings{"a 46200-46201.99931"}));
  EXPECT_TRUE(on(46202).empty());
}

TEST_P(CalendarStoreContract, ItemsWithAZoneFollowTheDeviceAcrossZones) {
  if (!traits().whole_records) GTEST_SKIP() << "it keeps no zones and no rules";
  ASSERT_TRUE(store_->put_zone(new_york()));
  AppointmentRecord record;
  record.fields.subject = u"call";
  record.zone = "America/New_York";
  record.start = midnight_of(Day(46200)) + 20 * 3600;  // 20:00 there is 03:00 in Berlin's summer
  record.end = record.start + 3600;
  const auto oid = store_->put(record);
  record.fields.subject = u"daily";
  record.rules = "RRULE:FREQ=DAILY;COUNT=2";
  ASSERT_NE(store_->put(record), 0);
  EXPECT_EQ(on(46201), (Strings{"call 46201.125-46201.16667", "daily 46201.125-46201.16667"}));
  EXPECT_TRUE(on(46200).empty());
  EXPECT_EQ(on(46202), (Strings{"daily 46202.125-46202.16667"}));
  clock_.zone = "Far/West";
  clock_.offset = -11 * 3600;
  EXPECT_EQ(on(46200).size(), 2u);
  EXPECT_TRUE(on(46202).empty());
  // A change of the subject leaves the zone.
  auto item = app_->item_from_oid(oid);
  AppointmentFields fields;
  item->read(fields);
  fields.subject = u"renamed";
  write_all(*item, fields);
  ASSERT_TRUE(item->save());
  EXPECT_EQ((*store_->load(oid))->start, record.start);
  EXPECT_EQ((*store_->load(oid))->zone, "America/New_York");
}

// The device shows 01:30 UTC at half past two, as it did an hour before: who did not touch the time
// must not move it there. What a file said of a changed occurrence stays with it.
TEST_P(CalendarStoreContract, WhatWasNotTouchedStaysInItsOwnZone) {
  if (!traits().whole_records) GTEST_SKIP() << "it keeps no zones and no rules";
  AppointmentRecord record;
  record.zone = "UTC";
  record.start = local_at_offset(kBackward + 1800, 0);
  record.end = record.start + 600;
  const auto single = store_->put(record);
  record.uid.clear();
  record.rules = "RRULE:FREQ=DAILY";
  AppointmentException changed;
  changed.original_start = record.start + kSecondsPerDay;
  changed.start = changed.original_start + 60;
  changed.end = changed.start + 60;
  changed.zone = "UTC";
  changed.residue = "X-KEPT:1";
  record.exceptions = {changed};
  const auto series = store_->put(record);
  const auto rename = [](Appointment* item) {
    ASSERT_TRUE(item);
    AppointmentFields fields;
    item->read(fields);
    fields.subject = u"renamed";
    write_all(*item, fields);
    ASSERT_TRUE(item->save());
  };
  rename(app_->item_from_oid(single).get());
  EXPECT_EQ((*store_->load(single))->start, record.start);
  OccurrenceError error = OccurrenceError::none;
  const auto item = app_->item_from_oid(series);
  const CalendarDate day = to_calendar_date(day_of(record.start));
  rename(item->pattern()->occurrence(day + 2.5 / 24, error).get());
  rename(item->pattern()->occurrence(day + 1, error).get());
  const auto after = *store_->load(series);
  ASSERT_EQ(after->exceptions.size(), 2u);
  EXPECT_EQ(after->exceptions[0].start, record.start);
  EXPECT_EQ(after->exceptions[0].end, record.end);
  EXPECT_EQ(after->exceptions[1].start, changed.start);
  EXPECT_EQ(after->exceptions[1].residue, changed.residue);
  EXPECT_EQ(after->exceptions[1].fields.subject, u"renamed");
}

// Of two on one day none is meant by the day alone.
TEST_P(CalendarStoreContract, AnOccurrenceIsFoundByItsStartElseAloneOnItsDay) {
  const auto oid = add_series(u"w", weekly(46205, 1 << 4));
  auto item = app_->item_from_oid(oid);
  OccurrenceError error = OccurrenceError::none;
  const auto start_of = [&](CalendarDate asked) {
    const auto found = item->pattern()->occurrence(asked, error);
    AppointmentFields fields;
    return found && found->read(fields) ? fields.start : 0;
  };
  EXPECT_EQ(start_of(46212.75), 46212.375);
  const auto moved = item->pattern()->occurrence(46205.375, error);
  AppointmentFields fields;
  moved->read(fields);
  fields.start = 46212.625;
  fields.end = 46212.75;
  write_all(*moved, fields);
  ASSERT_TRUE(moved->save());
  EXPECT_EQ(start_of(46212.375), 46212.375);
  EXPECT_EQ(start_of(46212.625), 46212.625);
  EXPECT_EQ(start_of(46212.5), 0);
  EXPECT_EQ(error, OccurrenceError::not_found);
}

TEST_P(CalendarStoreContract, ASkippedLocalTimeIsShownAtTheMovedTime) {
  auto pattern = weekly(46103, 1, 3);  // Sundays from 22 March 2026
  pattern.start_time = 2.5 / 24;
  pattern.end_time = 3.0 / 24;
  const auto oid = add_series(u"night", pattern);
  EXPECT_EQ(found(u""), (Strings{"night 46103.10417-46103.125", "night 46110.14583-46110.16667",
                                 "night 46117.10417-46117.125"}));
  OccurrenceError error;  // asked for by its usual time
  auto item = app_->item_from_oid(oid);
  const auto one = item->pattern()->occurrence(46110 + 2.5 / 24, error);
  ASSERT_TRUE(one);
  AppointmentFields fields;
  ASSERT_TRUE(one->read(fields));
  EXPECT_EQ(to_seconds(fields.start), to_seconds(46110 + 3.5 / 24)) << "as its row says";
  fields.subject = u"changed";
  EXPECT_TRUE(one->write(fields, {AppointmentField::subject}).empty());
  ASSERT_TRUE(one->save());
  EXPECT_EQ(found(u"").size(), 3u);
  EXPECT_TRUE(item->pattern()->occurrence(46110 + 2.5 / 24, error));
  EXPECT_TRUE(app_->item_from_oid(oid)->pattern()->occurrence(46110 + 2.5 / 24, error)->remove());
  EXPECT_EQ(found(u"").size(), 2u);
}

TEST_P(CalendarStoreContract, ALongOccurrenceReachesIntoLaterDays) {
  auto pattern = weekly(46205, 1 << 4);
  pattern.duration = 3 * 24 * 60;
  pattern.end_time = pattern.start_time;
  add_series(u"long", pattern);
  EXPECT_EQ(on(46208), (Strings{"long 46205.375-46208.375"}));
  EXPECT_TRUE(on(46209).empty());
  EXPECT_EQ(on(46205 + 7 * 520 + 2).size(), 1u);
}

TEST_P(CalendarStoreContract, RecordsComeBackWhole) {
  if (!traits().whole_records) GTEST_SKIP() << "it keeps no zones and no rules";
  AppointmentRecord record;
  record.uid = "one@test";
  record.fields.subject = u"Тема 😀" + Text(1, u'\0') + u"after";
  record.fields.categories = u"Work, Home";
  record.fields.body = u"notes";
  record.fields.body_ink = std::string("ink\0ink", 7);
  record.start = midnight_of(Day(46200));
  record.end = record.start + 5400;
  record.rules = "RRULE:FREQ=YEARLY;BYMONTHDAY=-1;COUNT=5\nRDATE:20270105T101500";
  record.recipients = {{u"A", u"a@test"}, {u"B", u""}};
  AppointmentException changed;
  changed.original_start = record.start + 31 * kSecondsPerDay;
  changed.start = changed.original_start + 60;
  changed.end = changed.start + 60;
  changed.fields.subject = u"changed";
  changed.recipients = {{u"C", u"c@test"}};
  changed.residue = "X-R:1";
  record.exceptions = {changed};
  record.residue = "X-A:b\r\n";
  record.modified = UtcSeconds(77);
  const auto oid = store_->put(record);
  ASSERT_NE(oid, 0);
  EXPECT_EQ(*store_->oid_of_uid("one@test"), oid);
  auto read = *store_->load(oid);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->rules, record.rules);
  EXPECT_EQ(read->recipients, record.recipients);
  EXPECT_EQ(read->residue, record.residue);
  EXPECT_EQ(read->modified, UtcSeconds(77));
  EXPECT_EQ(read->fields.body_ink, record.fields.body_ink);
  EXPECT_EQ(read->fields.subject, record.fields.subject);
  EXPECT_TRUE(found(u"", false)[0].starts_with(to_utf8(record.fields.subject)));
  ASSERT_EQ(read->exceptions.size(), 1u);
  EXPECT_EQ(read->exceptions[0].recipients, changed.recipients);
  EXPECT_EQ(read->exceptions[0].residue, "X-R:1");
  record.uid = "one@test";
  EXPECT_EQ(store_->put(record), 0) << "a UID is there once";
  EXPECT_NE(store_->problem().find("one@test"), std::string::npos);
  EXPECT_EQ(found(u"[Start] >= <46250 AND [Start] <= <46400").size(), 3u);  // two of the five
}

TEST_P(CalendarStoreContract, TransactionsAreAllOrNothing) {
  ASSERT_TRUE(store_->begin());
  EXPECT_FALSE(store_->begin());
  AppointmentRecord record;
  record.uid = "a";
  record.start = midnight_of(Day(46200));
  record.end = record.start + 60;
  record.fields.categories = u"Gone";
  record.rules = "RRULE:FREQ=DAILY";
  ASSERT_NE(store_->put(record), 0);
  ASSERT_TRUE(store_->put_foreign({"k", "text"}));
  EXPECT_EQ(on(46200).size(), 1u) << "a transaction sees its own changes";
  store_->rollback();
  EXPECT_TRUE(on(46200).empty());
  EXPECT_FALSE(*store_->oid_of_uid("a"));
  EXPECT_TRUE(store_->foreign()->empty());
  EXPECT_TRUE(store_->category_use_counts()->empty());
  EXPECT_FALSE(store_->commit());
}

// Whether one change alone or one of a transaction: what fails leaves nothing, and nothing that
// comes later hangs in it.
TEST_P(CalendarStoreContract, AFailedWriteTakesNothingWithIt) {
  AppointmentRecord record;
  record.uid = "a";
  ASSERT_NE(store_->put(record), 0);
  EXPECT_EQ(store_->put(record), 0);
  const auto gone = app_->item_from_oid(add(u"gone", 46200.5, 46200.6));
  ASSERT_TRUE(store_->erase(gone->oid()));
  gone->set_recipients({});
  EXPECT_FALSE(gone->save());
  EXPECT_NE(store_->problem().find("no appointment"), std::string::npos);
  for (int i = 0; i < 3; ++i) add(u"later", 46200.5, 46200.6);
  ASSERT_TRUE(store_->begin()) << "none is open";
  record.uid = "b";
  EXPECT_NE(store_->put(record), 0);
  record.uid = "a";
  EXPECT_EQ(store_->put(record), 0);
  EXPECT_FALSE(store_->commit()) << "a part of it would be missing";
  EXPECT_FALSE(*store_->oid_of_uid("b"));
  EXPECT_EQ(store_->oids({}, {})->size(), 4u);
}

TEST_P(CalendarStoreContract, OidsAreNeverUsedAgain) {
  const auto first = add(u"a", 46200.5, 46200.6);
  ASSERT_TRUE(app_->item_from_oid(first)->remove());
  EXPECT_FALSE(app_->item_from_oid(first));
  EXPECT_FALSE(store_->erase(first));
  EXPECT_NE(add(u"b", 46200.5, 46200.6), first);
}

TEST_P(CalendarStoreContract, LabelsInUseAreCounted) {
  AppointmentRecord record;
  record.start = record.end = midnight_of(Day(46200));
  record.fields.categories = u"Work, Home";
  const auto oid = store_->put(record);
  record.fields.categories = u"Work";
  record.uid.clear();
  store_->put(record);
  StoreContact contact;
  contact.file_as = u"Z";
  contact.categories = u"Home";
  const auto person = store_->put_contact(contact);
  auto uses = *store_->category_use_counts();
  ASSERT_EQ(uses.size(), 2u);
  EXPECT_EQ(uses[0].label, u"Home");
  EXPECT_EQ(uses[0].appointments, 1);
  EXPECT_EQ(uses[0].contacts, 1);
  EXPECT_EQ(uses[1].appointments, 2);
  EXPECT_EQ(app_->default_folder(kFolderContacts)->category_text(), u"Home");
  EXPECT_EQ(app_->default_folder(kFolderTasks)->category_text(), u"");
  auto changed = **store_->load(oid);
  changed.fields.categories.clear();
  ASSERT_NE(store_->put(changed), 0);
  ASSERT_TRUE(store_->erase_contact(person));
  uses = *store_->category_use_counts();
  ASSERT_EQ(uses.size(), 1u);
  EXPECT_EQ(uses[0].appointments, 1);
}

TEST_P(CalendarStoreContract, ChangesArePostedFromPollOnceForEachKind) {
  if (!traits().tells_by_poll) GTEST_SKIP() << "the platform posts messages";
  struct Listener : StoreListener {
    void store_changed(std::uint32_t notification) override { heard.push_back(notification); }
    std::vector<std::uint32_t> heard;
  } listener, asked;
  int woken = 0;
  store_->set_wake([&] { ++woken; });
  auto app = store_->create_application(false);
  app->logon(&listener);
  store_->set_posts_unasked(false);
  auto notify = store_->create_application(true);
  notify->logon(&asked);
  const auto oid = add(u"a", 46200.5, 46200.6);
  add(u"b", 46200.5, 46200.6);
  EXPECT_TRUE(listener.heard.empty());
  EXPECT_EQ(woken, 1);
  EXPECT_TRUE(store_->poll());
  EXPECT_FALSE(store_->poll());
  EXPECT_EQ(listener.heard, std::vector<std::uint32_t>{0x8100});
  EXPECT_TRUE(asked.heard.empty());
  notify->default_folder(kFolderCalendar)->enable_notifications();
  app.reset();
  app_->item_from_oid(oid)->remove();
  store_->poll();
  EXPECT_EQ(asked.heard, std::vector<std::uint32_t>{0x8101});
  EXPECT_EQ(listener.heard.size(), 1u);
}

TEST_P(CalendarStoreContract, ACopyHasNoIdAndNoRecurrence) {
  const auto oid = add_series(u"w", weekly(46205, 1 << 4));
  auto item = app_->item_from_oid(oid);
  item->set_recipients({{u"A", u"a@test"}});
  auto copy = item->copy();
  EXPECT_EQ(copy->oid(), 0);
  EXPECT_FALSE(copy->is_recurring());
  ASSERT_TRUE(copy->save());
  EXPECT_NE(copy->oid(), oid);
  EXPECT_EQ(copy->recipients()->size(), 1u);
}

}  // namespace orvello::test
