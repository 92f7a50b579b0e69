// Series that are divided, given another pattern, or made one appointment: what becomes of their
// other occurrences, above all of the earlier ones and of those that were changed before.
#include <cstdlib>

#include "store/record_appointment.h"
#include "tests/contract/calendar_store_contract.h"

namespace orvello::test {
namespace {

using Field = AppointmentField;
constexpr std::int32_t kFirst = 46205;  // Thursday 2 July 2026

struct ShownRow {
  std::int32_t oid = 0;
  CalendarDate start = 0;
  std::string text;  // "subject start-end"
};

std::vector<ShownRow> rows(StoreApplication& app) {
  auto items = app.default_folder(kFolderCalendar)->items();
  items->set_include_recurrences(true);
  items->sort(u"[Start]", false);
  std::vector<ShownRow> list;
  EXPECT_TRUE(each_item(*items, u"[Start] >= <46100 AND [Start] <= <47400", [&](StoreItem& item) {
    char times[64];
    std::snprintf(times, sizeof times, " %.10g-%.10g", item.start, item.end);
    list.push_back({item.summary->oid, item.start, to_utf8(item.summary->subject) + times});
  }));
  return list;
}

std::string text_of(const std::vector<ShownRow>& list) {
  std::string text;
  for (const ShownRow& row : list) text += row.text + "\n";
  return text;
}

AppointmentRecord series_from(const char* rules, const char* zone = "", bool all_day = false) {
  AppointmentRecord record;
  record.fields.subject = u"s";
  record.fields.location = u"room";
  record.fields.all_day = all_day;
  record.zone = zone;
  record.start = midnight_of(Day(kFirst)) + (all_day ? 0 : 9 * 3600);
  record.end = record.start + 3600;
  if (rules) record.rules = rules;
  record.recipients = {{u"A", u"a@test"}};
  record.residue = "\nX-KEPT:1";
  return record;
}

// `subject` empty: deleted. At the series' times.
AppointmentException exception_of(const AppointmentRecord& record, LocalSeconds original,
                                  TextView subject) {
  AppointmentException one;
  one.original_start = one.start = original;
  one.end = one.start + (record.end - record.start);
  one.zone = record.zone;
  one.fields = record.fields;
  one.fields.subject = subject;
  one.deleted = subject.empty();
  if (!one.deleted) one.residue = "X-OWN:1";
  return one;
}

std::unique_ptr<Appointment> following(StoreApplication& app, std::int32_t oid,
                                       CalendarDate start) {
  OccurrenceError error = OccurrenceError::unreadable;
  auto rest = app.item_from_oid(oid)->pattern()->following(start, error);
  EXPECT_TRUE(rest && error == OccurrenceError::none) << start << to_utf8(app.problem());
  return rest;
}

void write_fields(Appointment& item, AppointmentFieldSet named,
                  const std::function<void(AppointmentFields&)>& change) {
  AppointmentFields fields;
  ASSERT_TRUE(item.read(fields));
  change(fields);
  ASSERT_TRUE(item.write(fields, named).empty());
}

// The third is deleted, the fourth renamed, the last moved past all others.
void change_some(StoreApplication& app, std::int32_t oid) {
  const auto plain = rows(app);
  const auto item = app.item_from_oid(oid);
  const auto pattern = item->pattern();
  OccurrenceError error;
  const auto last = pattern->occurrence(plain.back().start, error);
  ASSERT_TRUE(last);
  write_fields(*last, {Field::start, Field::end}, [](auto& f) { f.start += 9, f.end += 9; });
  ASSERT_TRUE(last->save());
  if (plain.size() < 5) return;
  ASSERT_TRUE(pattern->occurrence(plain[2].start, error)->remove());
  const auto renamed = pattern->occurrence(plain[3].start, error);
  write_fields(*renamed, {Field::subject}, [](auto& f) { f.subject = u"renamed"; });
  ASSERT_TRUE(renamed->save());
}

struct Division {
  const char* rules;
  const char* zone = "";
  bool all_day = false;
  bool as_pattern = true;
};

const Division kDivisions[] = {
    {"RRULE:FREQ=WEEKLY;BYDAY=TH,MO;COUNT=12"},
    {"RRULE:FREQ=WEEKLY;INTERVAL=2;BYDAY=TH,SA;UNTIL=20260930T090000"},
    {"RRULE:FREQ=DAILY;INTERVAL=3;COUNT=9", "America/New_York"},
    {"RRULE:FREQ=MONTHLY;BYMONTHDAY=2;COUNT=5", "", true},
    {"RRULE:FREQ=MONTHLY;BYDAY=1TH;COUNT=6", "America/New_York"},
    {"RRULE:FREQ=YEARLY;COUNT=3"},
    {"RRULE:FREQ=MONTHLY;BYDAY=TH,FR,SA;BYSETPOS=1;COUNT=7", "", false, false},
    {"RRULE:FREQ=WEEKLY;BYDAY=TH;BYHOUR=9,15;COUNT=11", "", false, false},
    {"RRULE:FREQ=HOURLY;INTERVAL=7;COUNT=20", "", false, false},
    {"RRULE:FREQ=WEEKLY;COUNT=5\nRDATE:20260704T120000,20260722T090000", "", false, false},
    {"RRULE:FREQ=WEEKLY;INTERVAL=2;COUNT=4\nRDATE:20260708T120000", "", false, false},
    {"RRULE:FREQ=DAILY;COUNT=20\nEXRULE:FREQ=WEEKLY;BYDAY=SA,SU", "", false, false},
    {"RRULE:FREQ=WEEKLY;INTERVAL=2;BYDAY=TH;COUNT=4\nRRULE:FREQ=MONTHLY;COUNT=3", "", false, false},
    {"RDATE:20260630T090000,20260702T090000,20260711T100000,20260801T090000", "", false, false},
};

}  // namespace

// Divided at any of its occurrences, a series shows what it did; the earlier ones are still its
// own.
TEST_P(CalendarStoreContract, ASeriesIsDividedAnywhereAndShowsWhatItDid) {
  ASSERT_TRUE(store_->put_zone(new_york()));
  for (const Division& c : kDivisions) {
    SCOPED_TRACE(c.rules);
    if (!traits().whole_records && (*c.zone != '\0' || !c.as_pattern)) continue;
    AppointmentRecord record = series_from(c.rules, c.zone, c.all_day);
    if (c.as_pattern)
      record.pattern =
          pattern_from_rule(*parse_rule(std::string_view(c.rules).substr(6)), record.start, 3600);
    ASSERT_EQ(record.pattern.has_value(), c.as_pattern);
    ASSERT_TRUE(store_->begin());  // for all of them, as a disk takes its time
    const auto oid = store_->put(record);
    ASSERT_NE(oid, 0);
    ASSERT_NO_FATAL_FAILURE(change_some(*app_, oid));
    const auto before = rows(*app_);
    const auto state = app_->item_from_oid(oid)->state();
    for (std::ptrdiff_t at = 0; at < std::ssize(before); ++at) {
      const ShownRow& asked = before[static_cast<std::size_t>(at)];
      SCOPED_TRACE(asked.text);
      ASSERT_TRUE(following(*app_, oid, asked.start)->remove());
      EXPECT_EQ(text_of(rows(*app_)), text_of({before.begin(), before.begin() + at}));
      ASSERT_TRUE(app_->restore(*state));
      const auto rest = following(*app_, oid, asked.start);
      ASSERT_TRUE(rest);
      EXPECT_EQ(rest->oid(), at == 0 ? oid : 0);
      ASSERT_TRUE(app_->item_from_oid(oid)->state()->same_as(*state)) << "nothing is saved yet";
      ASSERT_TRUE(rest->save()) << to_utf8(app_->problem());
      const auto after = rows(*app_);
      EXPECT_EQ(text_of(after), text_of(before));
      auto left = at;
      for (const ShownRow& row : after)
        EXPECT_EQ(row.oid, left-- > 0 ? oid : rest->oid()) << row.text;
      if (at > 0) {
        const auto now = **store_->load(rest->oid());
        EXPECT_EQ(now.residue, traits().whole_records ? record.residue : "");
        EXPECT_EQ(now.recipients, record.recipients);
        EXPECT_EQ(now.zone, record.zone);
        EXPECT_TRUE(now.pattern || !c.as_pattern) << now.rules;
        EXPECT_NE(now.uid, (*store_->load(oid))->uid);
        ASSERT_TRUE(rest->remove());
      }
      ASSERT_TRUE(app_->restore(*state));
    }
    store_->rollback();
  }
}

// What follows is edited like a series, and what came before it is as it was.
TEST_P(CalendarStoreContract, WhatFollowsIsEditedAndWhatCameBeforeStays) {
  AppointmentRecord record = series_from(nullptr);
  record.pattern = weekly(kFirst, 1 << 4, 8);
  const auto at = [&](int week) { return record.start + week * 7 * kSecondsPerDay; };
  auto moved = exception_of(record, at(5), u"moved");
  moved.start += 7200;
  moved.end += 7200;
  record.exceptions = {exception_of(record, at(1), {}), exception_of(record, at(2), u"early"),
                       exception_of(record, at(4), {}), moved,
                       exception_of(record, at(6), u"late")};
  const auto oid = store_->put(record);
  const auto before = rows(*app_);
  auto rest = following(*app_, oid, kFirst + 21.375);
  auto pattern = **rest->pattern()->fields();
  EXPECT_EQ(pattern.occurrences, 5);
  EXPECT_EQ(rest->pattern()->exception_count(), 3);
  pattern.start_time += 1 / 24.0;
  pattern.end_time += 2 / 24.0;
  EXPECT_EQ(rest->pattern()->lost_changes(pattern), 0);
  ASSERT_TRUE(rest->pattern()->set_fields(pattern));
  write_fields(*rest, {Field::subject}, [](auto& f) { f.subject = u"new"; });
  rest->set_recipients({{u"B", u"b@test"}});
  EXPECT_TRUE(rest->is_recurring());
  // Somebody else's change of the series goes along.
  const auto other = app_->item_from_oid(oid);
  write_fields(*other, {Field::location}, [](auto& f) { f.location = u"hall"; });
  ASSERT_TRUE(other->save());
  ASSERT_TRUE(rest->save());
  EXPECT_EQ(text_of(rows(*app_)), before[0].text + "\n" + before[1].text +
                                      "\nnew 46226.41667-46226.5\nmoved 46240.45833-46240.5\n"
                                      "late 46247.41667-46247.5\nnew 46254.41667-46254.5\n");
  EXPECT_EQ((*store_->load(oid))->recipients, record.recipients);
  EXPECT_EQ((*store_->load(rest->oid()))->recipients[0].name, u"B");
  EXPECT_EQ((*store_->load(rest->oid()))->fields.location, u"hall");
  // A plain change of the times keeps the exceptions as well.
  auto again = following(*app_, rest->oid(), kFirst + 35 + 11 / 24.0);
  write_fields(*again, {Field::start, Field::end}, [](auto& f) { f.start += 1, f.end += 1; });
  ASSERT_TRUE(again->save()) << to_utf8(app_->problem());
  const auto now = rows(*app_);
  ASSERT_EQ(now.size(), 6u);
  EXPECT_EQ(now[2].text, "new 46226.41667-46226.5");
  EXPECT_EQ(now[3].text, "moved 46240.45833-46240.5");
  EXPECT_EQ(now[4].text, "late 46248.41667-46248.5");
}

TEST_P(CalendarStoreContract, WhatFollowsOfASeriesThatChangedElsewhereIsToldAndNotSaved) {
  AppointmentRecord record = series_from(nullptr);
  record.pattern = weekly(kFirst, 1 << 4, 4);
  const auto oid = store_->put(record);
  const auto state = app_->item_from_oid(oid)->state();
  OccurrenceError error;
  const auto remove = [&](double start) {
    return app_->item_from_oid(oid)->pattern()->occurrence(start, error)->remove();
  };
  const CalendarDate split = kFirst + 14.375;
  auto rest = following(*app_, oid, split);
  ASSERT_TRUE(remove(split));
  const auto without = rows(*app_);
  EXPECT_FALSE(rest->save());
  EXPECT_FALSE(app_->problem().empty());
  EXPECT_FALSE(rest->remove());
  EXPECT_EQ(text_of(rows(*app_)), text_of(without));
  EXPECT_FALSE(app_->item_from_oid(oid)->pattern()->following(kFirst + 15.375, error));
  EXPECT_EQ(error, OccurrenceError::not_found);
  ASSERT_TRUE(app_->restore(*state));
  rest = following(*app_, oid, split);
  ASSERT_TRUE(store_->erase(oid));
  EXPECT_FALSE(rest->save());
  EXPECT_FALSE(app_->problem().empty());
  // Nothing is left of the series before: what follows takes its place.
  ASSERT_TRUE(app_->restore(*state));
  rest = following(*app_, oid, split);
  ASSERT_TRUE(remove(kFirst + 0.375));
  ASSERT_TRUE(remove(kFirst + 7.375));
  EXPECT_EQ(following(*app_, oid, split)->oid(), oid);
  write_fields(*rest, {Field::subject}, [](auto& f) { f.subject = u"new"; });
  ASSERT_TRUE(rest->save());
  EXPECT_EQ(rest->oid(), oid);
  EXPECT_EQ(text_of(rows(*app_)), "new 46219.375-46219.41667\nnew 46226.375-46226.41667\n");
}

namespace {

// A weekly series of Thursdays, its second one deleted, the third renamed, the fourth moved to the
// Friday, the eighth renamed. `zoned`: these are Wednesdays in its zone; `rules`: no pattern has
// it.
AppointmentRecord thursdays(bool zoned, bool rules) {
  AppointmentRecord record = series_from(rules ? "RRULE:FREQ=WEEKLY;BYHOUR=9" : nullptr);
  if (zoned) {
    record.zone = "America/New_York";
    record.start -= 15 * 3600;
    record.end -= 15 * 3600;
  }
  if (!rules) {
    record.pattern = weekly(day_of(record.start).number(), 1 << (zoned ? 3 : 4));
    record.pattern->start_time = time_of_day(to_calendar_date(record.start));
    record.pattern->end_time = time_of_day(to_calendar_date(record.end));
  }
  const auto at = [&](int week) { return record.start + week * 7 * kSecondsPerDay; };
  auto moved = exception_of(record, at(3), u"moved");
  moved.start += kSecondsPerDay + 3 * 3600;
  moved.end = moved.start + 600;
  record.exceptions = {exception_of(record, at(1), {}), exception_of(record, at(2), u"third"),
                       moved, exception_of(record, at(7), u"eighth")};
  return record;
}

// The pattern that it is given, how many changes are lost, and what four weeks then show.
struct Repattern {
  const char* name;
  std::function<void(RecurrencePattern&)> change;
  int lost;
  const char* first_rows;
};

const Repattern kRepatterns[] = {
    {"the same", [](RecurrencePattern&) {}, 0, "s 0.375|third 14.375|moved 22.5|"},
    {"fields of other types", [](auto& p) { p.day_of_month = 9, p.instance = 2; }, 0,
     "s 0.375|third 14.375|moved 22.5|"},
    {"another time", [](auto& p) { p.start_time = 0.5, p.end_time = 0.75; }, 0,
     "s 0.5|third 14.5|moved 22.5|"},
    {"more days", [](auto& p) { p.day_of_week_mask |= 1 << 5; }, 0,
     "s 0.375|s 1.375|s 8.375|third 14.375|s 15.375|s 22.375|moved 22.5|"},
    {"daily", [](auto& p) { p.type = RecurrenceType::daily, p.interval = 7; }, 0,
     "s 0.375|third 14.375|moved 22.5|"},
    {"every other week", [](auto& p) { p.interval = 2; }, 2, "s 0.375|third 14.375|"},
    {"another day", [](auto& p) { p.day_of_week_mask = 1 << 5; }, 3,
     "s 1.375|s 8.375|s 15.375|s 22.375|"},
    {"an end", [](auto& p) { p.no_end_date = false, p.occurrences = 4; }, 1,
     "s 0.375|third 14.375|moved 22.5|"},
    {"a later start", [](auto& p) { p.pattern_start_date += 14; }, 0, "third 14.375|moved 22.5|"},
};

}  // namespace

TEST_P(CalendarStoreContract, ANewPatternKeepsTheExceptionsOfItsDays) {
  ASSERT_TRUE(store_->put_zone(new_york()));
  // The same in a zone in which these are Wednesday nights, and where no pattern was before.
  for (const char* kind : {"", "America/New_York", "rules"})
    for (const Repattern& c : kRepatterns) {
      if (*kind != '\0' && !traits().whole_records) continue;
      SCOPED_TRACE(std::string(kind) + ": " + c.name);
      const bool zoned = *kind == 'A', rules = *kind == 'r';
      if (zoned) clock_.offset = 10 * 3600;
      clock_.zone = zoned ? "Far/East" : "Europe/Berlin";
      const AppointmentRecord record = thursdays(zoned, rules);
      ASSERT_TRUE(store_->begin());
      const auto oid = store_->put(record);
      ASSERT_NE(oid, 0);
      const auto item = app_->item_from_oid(oid);
      auto pattern = (*item->pattern()->fields()).value_or(weekly(kFirst, 1 << 4));
      EXPECT_EQ(to_utf8(item->pattern()->rules()), rules ? record.rules : "");
      EXPECT_EQ(pattern.day_of_week_mask, 1 << 4);
      c.change(pattern);
      EXPECT_EQ(item->pattern()->lost_changes(pattern), c.lost);
      ASSERT_TRUE(item->pattern()->set_fields(pattern));
      // The pattern says the times, whatever is written.
      write_fields(*item, {Field::start, Field::end}, [](auto& f) { f.start += 99, f.end += 99; });
      ASSERT_TRUE(item->save());
      std::string shown;
      for (const ShownRow& row : rows(*app_))
        if (row.start < kFirst + 28) {
          char text[64];
          std::snprintf(text, sizeof text, "%.10g|", row.start - kFirst);
          shown += row.text.substr(0, row.text.find(' ') + 1) + text;
        }
      EXPECT_EQ(shown, c.first_rows);
      const auto now = **store_->load(oid);
      EXPECT_EQ(now.zone, record.zone);
      for (const AppointmentException& one : now.exceptions) {
        EXPECT_EQ(one.residue.empty(), one.deleted || !traits().whole_records);
        if (one.fields.subject == u"third") {
          EXPECT_EQ(one.end - one.start, now.end - now.start) << "it follows the series";
        }
      }
      store_->rollback();
    }
}

TEST_P(CalendarStoreContract, ASeriesMadeOneAppointmentHasTheTimesThatWereWritten) {
  for (const bool written : {false, true}) {
    const bool whole = traits().whole_records;
    AppointmentRecord record = series_from(whole ? "RRULE:FREQ=WEEKLY;BYHOUR=9,15" : nullptr);
    if (!whole) record.pattern = weekly(kFirst, 1 << 4);
    record.exceptions = {exception_of(record, record.start, {})};
    const auto oid = store_->put(record);
    const auto item = app_->item_from_oid(oid);
    if (written)
      write_fields(*item, {Field::start, Field::end}, [](auto& f) { f.start += 3, f.end += 4; });
    item->clear_pattern();
    ASSERT_TRUE(item->save());
    EXPECT_EQ(text_of(rows(*app_)),
              written ? "s 46208.375-46209.41667\n" : "s 46205.375-46205.41667\n");
    ASSERT_TRUE(store_->erase(oid));
  }
}

// To whole days and back, out of its zone and all.
TEST_P(CalendarStoreContract, ChangedOccurrencesFollowTheirSeriesToWholeDays) {
  ASSERT_TRUE(store_->put_zone(new_york()));
  AppointmentRecord record =
      series_from("RRULE:FREQ=DAILY;COUNT=3", traits().whole_records ? "America/New_York" : "");
  record.exceptions = {exception_of(record, record.start + kSecondsPerDay, u"second")};
  const auto item = app_->item_from_oid(store_->put(record));
  write_fields(*item, {Field::all_day, Field::start, Field::end}, [](auto& f) {
    f.all_day = true;
    f.start = kFirst;
    f.end = kFirst + 1439 / 1440.0;
  });
  ASSERT_TRUE(item->save()) << to_utf8(app_->problem());
  EXPECT_EQ(text_of(rows(*app_)),
            "s 46205-46205.99931\nsecond 46206-46206.99931\ns 46207-46207.99931\n");
}

}  // namespace orvello::test
