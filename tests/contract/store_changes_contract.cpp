// What is written of an appointment, what is not, and what can be taken back.
#include <tuple>

#include "hosts/headless/headless_ports.h"
#include "store/contact_list.h"
#include "store/record_appointment.h"
#include "tests/contract/calendar_store_contract.h"

namespace orvello::test {
namespace {

using Field = AppointmentField;
using Strings = std::vector<std::string>;
constexpr std::int32_t kThursday = 46205;

AppointmentFields read(const Appointment& item) {
  AppointmentFields fields;
  EXPECT_TRUE(item.read(fields));
  return fields;
}

bool save_with(Appointment& item, const std::function<void(AppointmentFields&)>& change,
               AppointmentFieldSet named) {
  AppointmentFields fields = read(item);
  change(fields);
  return item.write(fields, named).empty() && item.save();
}

}  // namespace

TEST_P(CalendarStoreContract, OnlyWhatIsNamedIsWritten) {
  const auto single = add(u"a", 46200.5, 46200.75);
  const auto series = add_series(u"w", weekly(kThursday, 1 << 4));
  const auto items = [&](bool occurrence) -> std::unique_ptr<Appointment> {
    auto item = app_->item_from_oid(occurrence ? series : single);
    OccurrenceError error;
    return occurrence ? item->pattern()->occurrence(kThursday + 7.375, error) : std::move(item);
  };
  for (const bool occurrence : {false, true}) {
    const auto mine = items(occurrence), other = items(occurrence);
    ASSERT_TRUE(save_with(
        *other, [](auto& f) { f.location = u"elsewhere", f.busy_status = BusyStatus::free; },
        {Field::location, Field::busy_status}));
    other->set_recipients({{u"A", u"a@test"}});
    ASSERT_TRUE(other->save());
    AppointmentFields stale = read(*mine);
    stale.subject = u"mine";
    stale.categories = u"not named";
    ASSERT_TRUE(mine->write(stale, {Field::subject}).empty());
    EXPECT_EQ(read(*mine).categories, u"");
    ASSERT_TRUE(mine->save());
    const auto now = items(occurrence);
    const auto fields = read(*now);
    EXPECT_EQ(fields.subject, u"mine");
    EXPECT_EQ(fields.location, u"elsewhere");
    EXPECT_EQ(fields.busy_status, BusyStatus::free);
    EXPECT_EQ(fields.categories, u"");
    EXPECT_EQ(now->recipients()->size(), occurrence && !traits().rich_occurrences ? 0u : 1u);
  }
}

TEST_P(CalendarStoreContract, InkAndItsTextAreOneThing) {
  const auto oid = add(u"a", 46200.5, 46200.75);
  const auto item = app_->item_from_oid(oid), late = app_->item_from_oid(oid);
  const AppointmentFieldSet ink = {Field::ink}, text = {Field::body};
  ASSERT_TRUE(save_with(
      *item, [](auto& f) { f.body_ink = "\1strokes", f.body = u"words"; }, ink));
  EXPECT_EQ(read(*app_->item_from_oid(oid)).body, u"words");

  AppointmentFields fields = read(*item);
  fields.body = u"other words";
  fields.subject = u"b";
  EXPECT_EQ(item->write(fields, {Field::body, Field::subject}), text);
  fields.body_ink = std::string(kMostInk + 1, 'i');
  EXPECT_EQ(item->write(fields, ink), ink);
  ASSERT_TRUE(item->save()) << "the rest is taken";
  // What has never shown the ink neither replaces nor belies it.
  EXPECT_EQ(late->write(fields, text), text);
  fields.body_ink = "mine";
  EXPECT_EQ(late->write(fields, ink), ink);
  const auto stored = read(*app_->item_from_oid(oid));
  EXPECT_EQ(stored.subject, u"b");
  EXPECT_EQ(stored.body, u"words");
  EXPECT_EQ(stored.body_ink, "\1strokes");

  fields.body_ink = std::string(kMostInk, 'i');
  EXPECT_TRUE(item->write(fields, ink).empty());
  ASSERT_TRUE(save_with(
      *app_->item_from_oid(oid), [](auto& f) { f.body_ink = "theirs"; }, ink));
  EXPECT_FALSE(item->save()) << "written between the two";
  EXPECT_FALSE(app_->problem().empty());
  // Without ink the text is the notes.
  ASSERT_TRUE(save_with(
      *app_->item_from_oid(oid), [](auto& f) { f.body_ink.clear(), f.body = u"plain"; }, ink));
  ASSERT_TRUE(save_with(
      *app_->item_from_oid(oid), [](auto& f) { f.body = u"plainer"; }, text));
  EXPECT_EQ(read(*app_->item_from_oid(oid)).body, u"plainer");
}

// Whatever rule it has, a series goes to other times with all that hangs on it, or says why not.
TEST_P(CalendarStoreContract, ASeriesMovesWholeOrNotAtAll) {
  struct Case {
    const char* rules;  // null: the weekly pattern
    double by;          // days
    bool works;
  };
  const Case cases[] = {
      {"RRULE:FREQ=WEEKLY;BYDAY=TH,MO;COUNT=6", 1 / 24.0, true},
      {"RRULE:FREQ=WEEKLY;BYDAY=TH,MO;UNTIL=20260720T090000", 1 / 24.0, true},
      {"RRULE:FREQ=WEEKLY;BYDAY=TH,MO;COUNT=6\nRDATE:20260725T090000", 1 / 24.0, true},
      {"RRULE:FREQ=WEEKLY;BYDAY=TH,MO;COUNT=6", 1, false},
      {"RRULE:FREQ=WEEKLY;BYDAY=TH,MO;BYHOUR=9,12;COUNT=6", 1 / 24.0, false},
      {"RRULE:FREQ=HOURLY;COUNT=60", 1 / 24.0, false},
      {nullptr, 1 / 24.0, true},
      {nullptr, 1, true}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.rules ? c.rules : "pattern");
    AppointmentRecord record;
    record.fields.subject = u"s";
    record.start = midnight_of(Day(kThursday)) + 9 * 3600;
    record.end = record.start + 3600;
    if (c.rules)
      record.rules = c.rules;
    else
      record.pattern = weekly(kThursday, 1 << 4, 6);
    AppointmentException gone, changed, filed;
    gone.deleted = true;
    gone.original_start = record.start + 7 * kSecondsPerDay;
    changed.original_start = record.start + 14 * kSecondsPerDay;
    changed.start = changed.original_start + 7200;
    changed.end = changed.start + 60;
    changed.fields.subject = u"changed";
    filed.original_start = filed.start = record.start + (c.rules ? 4 : 21) * kSecondsPerDay;
    filed.end = filed.start + 3600;
    filed.fields.subject = u"filed";
    record.exceptions = {gone, changed, filed};
    const auto oid = store_->put(record);
    if (oid == 0 && c.rules && !traits().whole_records) {
      EXPECT_FALSE(app_->problem().empty());
      continue;
    }
    ASSERT_NE(oid, 0);
    const auto item = app_->item_from_oid(oid);
    const auto before = found(u"[Start] >= <46200");
    const bool done = save_with(*item, [&](auto& f) { f.start += c.by, f.end += c.by; },
                                {Field::start, Field::end});
    // A pattern goes along to another day.
    const bool works = c.works || !traits().whole_records;
    EXPECT_EQ(done, works);
    EXPECT_EQ(app_->problem().empty(), works);
    Strings expected;
    if (!works) {
      expected = before;
    } else {
      std::vector<std::pair<double, std::string>> rows;
      for (const std::string& row : before) {
        double start = 0, end = 0;
        char subject[16];
        ASSERT_EQ(std::sscanf(row.c_str(), "%15s %lf-%lf", subject, &start, &end), 3);
        const auto later = [&](CalendarDate date) {
          const auto seconds = static_cast<std::int64_t>(c.by * kSecondsPerDay + 0.5);
          return to_calendar_date(to_seconds(date) + (subject[0] == 'c' ? 0 : seconds));
        };
        char text[64];
        std::snprintf(text, sizeof text, "%s %.10g-%.10g", subject, later(start), later(end));
        rows.push_back({later(start), text});
      }
      std::stable_sort(rows.begin(), rows.end(),
                       [](const auto& a, const auto& b) { return a.first < b.first; });
      for (const auto& row : rows) expected.push_back(row.second);
    }
    EXPECT_EQ(found(u"[Start] >= <46200"), expected);
    ASSERT_TRUE(store_->erase(oid));
  }
}

// Thursday evening in New York is Friday morning in Berlin.
TEST_P(CalendarStoreContract, APatternIsGivenAndSetInTheDevicesDays) {
  if (!traits().whole_records) GTEST_SKIP() << "it keeps no zones and no rules";
  ASSERT_TRUE(store_->put_zone(new_york()));
  AppointmentRecord record;
  record.zone = "America/New_York";
  record.start = midnight_of(Day(kThursday)) + 20 * 3600;
  record.end = record.start + 3600;
  record.fields.subject = u"call";
  record.pattern = weekly(kThursday, 1 << 4, 3);
  record.pattern->start_time = 20 / 24.0;
  record.pattern->end_time = 21 / 24.0;
  const auto oid = store_->put(record);
  auto item = app_->item_from_oid(oid);
  auto pattern = **item->pattern()->fields();
  EXPECT_EQ(pattern.day_of_week_mask, 1 << 5);
  EXPECT_EQ(pattern.pattern_start_date, kThursday + 1);
  EXPECT_EQ(pattern.pattern_end_date, kThursday + 15);
  EXPECT_EQ(pattern.start_time, 3 / 24.0);
  pattern.day_of_week_mask |= 1 << 6;
  pattern.start_time = 4 / 24.0;
  pattern.end_time = 5 / 24.0;
  ASSERT_TRUE(item->pattern()->set_fields(pattern));
  ASSERT_TRUE(item->save());
  EXPECT_EQ((*store_->load(oid))->zone, "America/New_York");
  EXPECT_EQ((*store_->load(oid))->pattern->day_of_week_mask, 1 << 4 | 1 << 5);
  EXPECT_EQ(found(u""), (Strings{"call 46206.16667-46206.20833", "call 46207.16667-46207.20833",
                                 "call 46213.16667-46213.20833"}));
  EXPECT_EQ((*item->pattern()->fields())->day_of_week_mask, pattern.day_of_week_mask);
  // The day after a month's last is no pattern's; its occurrences are there.
  record.oid = 0;
  record.uid.clear();
  record.pattern->type = RecurrenceType::monthly;
  record.pattern->day_of_month = 31;
  item = app_->item_from_oid(store_->put(record));
  const auto held = item->pattern()->fields();
  ASSERT_TRUE(held);
  EXPECT_FALSE(*held);
  OccurrenceError error;
  EXPECT_TRUE(item->pattern()->occurrence(46235 + 3 / 24.0, error));  // 1 August
}

TEST_P(CalendarStoreContract, AFetchIsGivenUpWhenItIsToldTo) {
  for (int i = 0; i < 200; ++i) add(u"a", 46200.5, 46200.75);
  const auto items = app_->default_folder(kFolderCalendar)->items();
  int asked = 0, until = 0;
  items->stop_when([&] { return asked++ >= until; });
  for (until = 0; until < 2; ++until) {
    asked = 0;
    EXPECT_FALSE(items->restrict_to(u"[Start] >= <46190"));
    EXPECT_TRUE(items->failed() && items->given_up());
    asked = 0;
    EXPECT_FALSE(each_item(*items, u"[Start] >= <46190", [&](const StoreItem&) {
      EXPECT_TRUE(until > 0 && !traits().fetches_whole);
    }));
    EXPECT_TRUE(items->failed() && items->given_up());
  }
  until = 1000;
  int count = 0;
  EXPECT_TRUE(each_item(*items, u"[Start] >= <46190", [&](const StoreItem&) { ++count; }));
  EXPECT_FALSE(items->given_up());
  EXPECT_EQ(count, 200);
}

TEST_P(CalendarStoreContract, WhatIsWantedIsThere) {
  for (const bool series : {false, true}) {
    AppointmentRecord record;
    record.fields.subject = u"subject";
    record.fields.categories = u"Work";
    record.fields.body = u"notes";
    record.fields.busy_status = BusyStatus::tentative;
    record.start = record.end = midnight_of(Day(kThursday));
    if (series) record.rules = "RRULE:FREQ=DAILY;COUNT=2";
    const auto oid = store_->put(record);
    const auto items = app_->default_folder(kFolderCalendar)->items();
    items->set_include_recurrences(true);
    items->want({Field::categories, Field::busy_status, Field::body});
    const auto item = items->restrict_to(u"[Start] >= <46190")->find(u"");
    ASSERT_TRUE(item);
    EXPECT_EQ(item->start, kThursday);
    EXPECT_EQ(item->summary->oid, oid);
    EXPECT_EQ(item->summary->recurring, series);
    EXPECT_EQ(item->summary->categories, u"Work");
    EXPECT_EQ(item->summary->busy_status, BusyStatus::tentative);
    EXPECT_TRUE(item->summary->has_notes);
    ASSERT_TRUE(store_->erase(oid));
  }
}

namespace {

AppointmentRecord rich_series(bool whole) {
  AppointmentRecord record;
  record.uid = "kept@test";
  record.fields.subject = u"s";
  record.fields.categories = u"Kept";
  record.fields.body = u"words";
  record.fields.body_ink = std::string("i\0k", 3);
  if (whole) record.zone = "America/New_York";
  record.start = midnight_of(Day(kThursday)) + 20 * 3600;
  record.end = record.start + 3600;
  record.pattern = weekly(kThursday, 1 << 4, 9);
  record.pattern->start_time = 20 / 24.0;
  record.pattern->end_time = 21 / 24.0;
  record.recipients = {{u"A", u"a@test"}};
  record.residue = "X-KEPT:1\r\n";
  record.modified = UtcSeconds(77);
  AppointmentException gone, changed;
  gone.original_start = record.start + 7 * kSecondsPerDay;
  gone.deleted = true;
  changed.original_start = record.start + 14 * kSecondsPerDay;
  changed.start = changed.original_start + 60;
  changed.end = changed.start + 60;
  changed.zone = record.zone;
  changed.fields.subject = u"changed";
  changed.recipients = {{u"C", u"c@test"}};
  changed.residue = "X-R:1";
  record.exceptions = {gone, changed};
  return record;
}

// Everything that a record holds, to be compared.
void expect_same(const AppointmentRecord& a, const AppointmentRecord& b) {
  const auto values = [](const AppointmentRecord& r) {
    return std::tie(r.oid, r.uid, r.fields, r.zone, r.start, r.end, r.pattern, r.rules,
                    r.recipients, r.modified, r.residue);
  };
  EXPECT_TRUE(values(a) == values(b));
  ASSERT_EQ(a.exceptions.size(), b.exceptions.size());
  for (std::size_t i = 0; i < a.exceptions.size(); ++i) {
    const auto parts = [](const AppointmentException& e) {
      return std::tie(e.original_start, e.deleted, e.fields, e.start, e.end, e.zone, e.recipients,
                      e.residue);
    };
    EXPECT_TRUE(parts(a.exceptions[i]) == parts(b.exceptions[i])) << i;
  }
}

}  // namespace

TEST_P(CalendarStoreContract, AStateBringsAllOfASeriesBack) {
  ASSERT_TRUE(store_->put_zone(new_york()));
  const auto oid = store_->put(rich_series(traits().whole_records));
  ASSERT_NE(oid, 0);
  const auto before = **store_->load(oid);
  const auto shown = found(u"");
  auto item = app_->item_from_oid(oid);
  OccurrenceError error;
  auto state = item->state();
  const double first = kThursday + (traits().whole_records ? 1 + 3 / 24.0 : 20 / 24.0);
  const auto same = item->pattern()->occurrence(first, error)->state();
  ASSERT_TRUE(state && same);
  ASSERT_TRUE(item->remove());
  item.reset();
  ASSERT_TRUE(app_->restore(*state));
  expect_same(**store_->load(oid), before);
  EXPECT_EQ(found(u""), shown);
  EXPECT_EQ(store_->category_use_counts()->size(), 1u);
  // Whatever became of it.
  item = app_->item_from_oid(oid);
  item->clear_pattern();
  ASSERT_TRUE(item->save());
  ASSERT_TRUE(app_->restore(*same));
  expect_same(**store_->load(oid), before);
  // With all of a transaction or not at all, and never beside another item of its UID.
  ASSERT_TRUE(store_->erase(oid));
  EXPECT_FALSE(app_->all_or_nothing([&] { return app_->restore(*state) && false; }));
  EXPECT_FALSE(app_->item_from_oid(oid));
  EXPECT_FALSE(app_->create_appointment()->state());
  if (!traits().whole_records) return;
  AppointmentRecord other;
  other.uid = before.uid;
  ASSERT_NE(store_->put(other), 0);
  EXPECT_FALSE(app_->restore(*state));
  EXPECT_NE(to_utf8(app_->problem()).find(before.uid), std::string::npos);
}

TEST_P(CalendarStoreContract, SendingSaysWhyNot) {
  auto item = app_->item_from_oid(add(u"a", 46200.5, 46200.75));
  std::vector<std::string> sent;
  std::string reason;
  store_->set_transport(
      [&](const AppointmentRecord& record) {
        sent.push_back(to_utf8(record.fields.subject));
        return reason;
      },
      {});
  EXPECT_EQ(item->send(), SendResult::no_recipients);
  item->set_recipients({{u"A", u"a@test"}});
  EXPECT_EQ(item->send(), SendResult::sent);
  reason = "The outbox is full.";
  EXPECT_EQ(item->send(), SendResult::failed);
  EXPECT_EQ(app_->problem(), u"The outbox is full.");
  EXPECT_EQ(sent, (Strings{"a", "a"}));
  store_->set_transport(
      [](const AppointmentRecord&) {
        return RecordCalendarStore::Sending(SendResult::no_way, "It is in a file.");
      },
      {});
  EXPECT_EQ(item->send(), SendResult::no_way);
  EXPECT_EQ(app_->problem(), u"It is in a file.");
  store_->set_transport({}, {});
  EXPECT_EQ(item->send(), SendResult::no_way);
  EXPECT_FALSE(app_->problem().empty());
}

TEST_P(CalendarStoreContract, ContactsComeInTheLocalesOrder) {
  StoreContact contact;
  std::int32_t oid = 0;
  for (const TextView name : {u"Яна", u"beta", u"Ёлкин", u"Alpha", u"Жуков", u"Еж"}) {
    contact.file_as = name;
    contact.email[2] = name;
    oid = store_->put_contact(contact);
  }
  contact.oid = oid;
  contact.file_as = u"Aaron";
  EXPECT_EQ(store_->put_contact(contact), oid);
  const auto list = sorted_contacts(*app_->default_folder(kFolderContacts), HeadlessLocale());
  ASSERT_TRUE(list);
  Text names;
  for (const StoreContact& one : *list) names += one.file_as + u" ";
  EXPECT_EQ(names, u"Aaron Alpha beta Ёлкин Жуков Яна ");
  EXPECT_EQ(list->front().email[2], u"Еж");
  EXPECT_TRUE(app_->default_folder(kFolderCalendar)->contacts()->empty());
}

}  // namespace orvello::test
