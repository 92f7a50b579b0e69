#include "store/day_agenda.h"

#include "store/day_label.h"
#include "tests/store/store_fixture.h"

namespace orvello {
namespace {

class DayAgendaTest : public StoreTest {
 protected:
  DayAgenda agenda(int of_november) {
    return full_agenda(session.CalendarItems().get(), day(of_november), settings,
                       [](TextView categories) { return categories != u"Hidden"; });
  }
  // "time|icons|subject" of each row, in a line of its own.
  static std::string rows(const DayAgenda& agenda) {
    std::string lines;
    for (const DayRow& row : agenda.rows)
      lines += to_utf8(row.time + u"|" + row.icons + u"|" + row.subject + u"\n");
    for (const std::size_t size :
         {agenda.row_ends.size(), agenda.row_colors.size(), agenda.row_shades.size()})
      EXPECT_EQ(size, agenda.rows.size());
    return lines;
  }
  SettingsRecord settings;
};

TEST_F(DayAgendaTest, LabelsSayWhichPartOfASpanTheDayHolds) {
  put(fields(u"Night", at(6, 22), at(7, 2)));
  put(fields(u"Midnight", at(7, 12), at(8, 0)));
  put(fields(u"Long", at(8, 9), at(10, 17)));
  AppointmentFields fair = fields(u"Fair", at(7, 0), at(8, 0));
  fair.all_day = true;
  put(fair);
  EXPECT_EQ(rows(agenda(6)), "10:00p-multiday||Night\n");
  EXPECT_EQ(rows(agenda(7)), "multiday-2:00a||Night\nAll Day||Fair\n12:00p-multiday||Midnight\n");
  EXPECT_EQ(rows(agenda(8)), "All Day||Fair\nmultiday-12:00a||Midnight\n9:00a-multiday||Long\n");
  EXPECT_EQ(to_seconds(agenda(8).row_ends[0]), to_seconds(at(8, 23, 59)));
  EXPECT_EQ(on(9), "multiday Long");
  EXPECT_EQ(on(10), "multiday-17:00 Long");
}

// Dates before 30 December 1899 are negative and their fractions count the other way round.
TEST_F(DayAgendaTest, ADayBefore1900ReadsLikeAnyOther) {
  const Day first = day_of(1604, 2, 28);
  const auto then = [&](int days, int hour) {
    return to_calendar_date(midnight_of(first + days) + hour * 3600);
  };
  put(fields(u"Night", then(0, 22), then(1, 2)));
  AppointmentFields birthday = fields(u"Birthday", then(1, 0), then(1, 0));
  birthday.all_day = true;
  put(birthday);
  put_series(fields(u"Lunch", then(0, 12), then(0, 13)));
  const char* const expected[] = {"", "12:00-13:00 Lunch, 22:00-multiday Night",
                                  "multiday-2:00 Night, All Day Birthday, 12:00-13:00 Lunch",
                                  "12:00-13:00 Lunch"};
  for (int days = -1; days <= 2; ++days) {
    std::string list;
    const auto rows = compact_agenda(session.CalendarItems().get(), first + days, true,
                                     [](TextView) { return true; });
    ASSERT_TRUE(rows);
    for (const CompactRow& row : *rows)
      if (row.is_appointment())
        list += (list.empty() ? "" : ", ") + to_utf8(row.time + u" " + row.subject);
    EXPECT_EQ(list, expected[days + 1]) << days;
  }
}

TEST_F(DayAgendaTest, ACrowdedSeriesEndsInARowThatCountsTheRest) {
  AppointmentRecord tick;
  tick.fields.subject = u"Tick";
  tick.rules = "RRULE:FREQ=SECONDLY";
  tick.start = tick.end = midnight_of(day(5));
  ASSERT_NE(store.put(tick), 0);
  const DayAgenda shown = agenda(6);
  ASSERT_EQ(shown.rows.size(), 1501u);
  EXPECT_EQ(shown.rows[1499].subject, u"Tick");
  EXPECT_EQ(shown.rows[1500].subject, u"and 84,900 more: Tick");
  EXPECT_EQ(shown.rows[1500].time, u"12:25a-11:59p");
  EXPECT_EQ(shown.rows[1500].oid, shown.rows[0].oid);
  EXPECT_EQ(to_seconds(shown.row_ends[1500]), to_seconds(at(6, 23, 59)) + 59);
}

TEST_F(DayAgendaTest, CrowdedSeriesLeaveAYearReadableAndCountWhatTheyDoNotList) {
  constexpr std::int64_t kDays = 365, kSeriesCount = 3;
  for (int i = 0; i < kSeriesCount; ++i) {
    AppointmentRecord tick;
    tick.rules = "RRULE:FREQ=SECONDLY";
    tick.start = tick.end = midnight_of(day(5));
    ASSERT_NE(store.put(tick), 0);
  }
  DayBounds year;
  year.end_from = day(6);
  year.start_to = year.end_from + kDays - 1;
  OccurrenceList list;
  ASSERT_TRUE(store.query({year, true}, list));
  EXPECT_LT(list.size(), 300'000u);
  std::int64_t counted = 0;
  for (std::size_t i = 0; i < list.size(); ++i)
    counted += std::max<std::int64_t>(list.item(i).many, 1);
  EXPECT_EQ(counted, kSeriesCount * kDays * kSecondsPerDay);
}

TEST_F(DayAgendaTest, RowsCarryLocationIconsAndColors) {
  settings.timeformat = settings.showlocation = 1;
  settings.category_props = {{u"Work", 0x112233, 0}, {u"Work", 0x445566, 0}, {u"Home", 7, 0}};
  AppointmentFields first = fields(u"First", at(6, 9), at(6, 10));
  first.location = u"Room 7";
  first.categories = u"Work";
  first.body = u"cake";
  first.reminder_set = true;
  const std::int32_t oid = put(first);
  AppointmentFields second = fields(u"Second", at(6, 11), at(6, 12));
  second.categories = u"Home, Work";
  put(second);
  DayAgenda shown = agenda(6);
  EXPECT_EQ(rows(shown), "9:00-10:00|nr|First\n| |[Room 7]\n11:00-12:00||Second\n");
  EXPECT_EQ(shown.rows[1],
            (DayRow{u"", u" ", u"[Room 7]", oid, u"Work", DayRow::Kind::location, at(6, 9)}));
  EXPECT_EQ(shown.row_ends[1], shown.row_ends[0]);
  EXPECT_EQ(shown.row_colors, (std::vector<Color>{0x112233, 0x112233, kWhite}));
  EXPECT_EQ(shown.row_shades, (std::vector<int>{1, 1, 0}));
  EXPECT_FALSE(shown.category_icon_seen);
  settings.categoryiconflag = 1;
  settings.alarmflag = settings.showlocation = 0;
  shown = agenda(6);
  EXPECT_EQ(rows(shown), "9:00-10:00|nc|First\n11:00-12:00|c|Second\n");
  EXPECT_TRUE(shown.category_icon_seen && shown.notes_seen && !shown.reminder_seen);
  EXPECT_EQ(location_label(Text(29, u'x')), u"[" + Text(29, u'x') + u"]");
  EXPECT_EQ(location_label(Text(30, u'x')), u"[" + Text(29, u'x') + u"...]");
}

// What is filtered out still widens the icon column.
TEST_F(DayAgendaTest, AFilteredDayAndAnEmptyOneDiffer) {
  AppointmentFields made = fields(u"Secret", at(6, 9), at(6, 10));
  made.categories = u"Hidden";
  made.body = u"notes";
  made.reminder_set = true;
  put(made);
  const DayAgenda filtered = agenda(6);
  EXPECT_EQ(rows(filtered), "No Appointments||\n");
  EXPECT_EQ(filtered.emptiness, DayAgenda::Emptiness::all_filtered);
  EXPECT_TRUE(filtered.notes_seen && filtered.reminder_seen);
  EXPECT_EQ(filtered.rows[0].kind, DayRow::Kind::nothing);
  EXPECT_EQ(filtered.row_ends[0], at(7, 0)) << "hour 24 of the day";
  EXPECT_EQ(agenda(7).emptiness, DayAgenda::Emptiness::nothing_found);
}

// Categories as other programs write them: empty pieces, doubled commas, endless ones.
TEST_F(DayAgendaTest, OddCategoryTextsAreTakenAsTheyStand) {
  settings.category_props = {{u"", 1, 0}, {u"Work", 2, 0}};
  settings.categoryiconflag = 1;
  const Text endless(10000, u'x');
  const std::pair<Text, Text> cases[] = {{u"", u"(None)"},          {u",,Work", u""},
                                         {u"Work,,Home,", u"Work"}, {u" Work", u" Work"},
                                         {endless, endless},        {endless + u",Work", endless}};
  int of_november = 1;
  for (const auto& [categories, first] : cases) {
    AppointmentFields made = fields(u"x", at(of_november, 9), at(of_november, 10));
    made.categories = categories;
    put(made);
    const DayAgenda shown = agenda(of_november++);
    EXPECT_EQ(shown.rows[0].first_category, first);
    EXPECT_EQ(shown.category_icon_seen, first.empty() || first == u"Work");
    EXPECT_EQ(shown.row_colors[0], categories.empty() ? 1u : kWhite);
  }
}

}  // namespace
}  // namespace orvello
