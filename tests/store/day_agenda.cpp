#include "store/day_agenda.h"

#include "store/day_label.h"
#include "tests/store/store_fixture.h"

namespace orvello {
namespace {

class DayAgendaTest : public StoreTest {
 protected:
  DayAgendaTest() {
    settings.timeformat = 1;
    passes = [this](TextView categories) { return categories != hidden; };
  }
  DayAgenda agenda(int of_november) {
    return full_agenda(session.CalendarItems().get(), day(of_november), settings, passes);
  }
  // "time|icons|subject" of each row.
  static Lines rows(const DayAgenda& agenda) {
    Lines lines;
    for (const DayRow& row : agenda.rows)
      lines.push_back(to_utf8(row.time + u"|" + row.icons + u"|" + row.subject));
    EXPECT_EQ(agenda.row_ends.size(), lines.size());
    EXPECT_EQ(agenda.row_colors.size(), lines.size());
    EXPECT_EQ(agenda.row_shades.size(), lines.size());
    return lines;
  }
  Lines labels(int of_november) {
    Lines times;
    for (const DayRow& row : agenda(of_november).rows) times.push_back(to_utf8(row.time));
    return times;
  }

  SettingsRecord settings;
  Text hidden = u"Hidden";
  ProfileFilter passes;
};

TEST_F(DayAgendaTest, LabelsSayWhichPartOfASpanTheDayHolds) {
  settings.timeformat = 0;
  put(fields(u"Night", at(6, 22), at(7, 2)));
  put(fields(u"Midnight", at(7, 12), at(8, 0)));
  put(fields(u"Long", at(8, 9), at(10, 17)));
  EXPECT_EQ(labels(6), Lines{"10:00p-multiday"});
  EXPECT_EQ(labels(7), (Lines{"multiday-2:00a", "12:00p-multiday"}));
  EXPECT_EQ(labels(8), (Lines{"multiday-12:00a", "9:00a-multiday"}));
  EXPECT_EQ(labels(9), Lines{"multiday"});
  EXPECT_EQ(labels(10), Lines{"multiday-5:00p"});
}

TEST_F(DayAgendaTest, AnAllDayItemEndsLateOnItsLastDay) {
  AppointmentFields fair = fields(u"Fair", at(6, 0), at(7, 0));
  fair.all_day = true;
  put(fair);
  const DayAgenda last = agenda(7);
  EXPECT_EQ(rows(last), Lines{"All Day||Fair"});
  EXPECT_EQ(to_seconds(last.row_ends[0]), to_seconds(at(7, 23, 59)));
  EXPECT_EQ(labels(8), Lines{"No Appointments"});
}

TEST_F(DayAgendaTest, LocationRowsContinueTheirAppointment) {
  settings.showlocation = 1;
  settings.category_props = {{u"Work", 0x112233, 0}, {u"Work", 0x445566, 0}, {u"Home", 7, 0}};
  AppointmentFields first = fields(u"First", at(6, 9), at(6, 10));
  first.location = u"Room 7";
  first.categories = u"Work";
  const std::int32_t oid = put(first);
  AppointmentFields second = fields(u"Second", at(6, 11), at(6, 12));
  second.categories = u"Home, Work";
  put(second);
  const DayAgenda shown = agenda(6);
  EXPECT_EQ(rows(shown), (Lines{"9:00-10:00||First", "| |[Room 7]", "11:00-12:00||Second"}));
  EXPECT_EQ(shown.rows[1].oid, oid);
  EXPECT_TRUE(shown.rows[1].continues);
  EXPECT_FALSE(shown.rows[2].continues);
  EXPECT_EQ(shown.row_ends[1], shown.row_ends[0]);
  EXPECT_EQ(shown.row_colors, (std::vector<Color>{0x112233, 0x112233, kWhite}));
  EXPECT_EQ(shown.row_shades, (std::vector<int>{1, 1, 0}));
  EXPECT_EQ(shown.rows[0].first_category, u"Work");
  EXPECT_EQ(shown.rows[2].first_category, u"Home");
  EXPECT_EQ(location_label(Text(29, u'x')), u"[" + Text(29, u'x') + u"]");
  EXPECT_EQ(location_label(Text(30, u'x')), u"[" + Text(29, u'x') + u"...]");
}

TEST_F(DayAgendaTest, IconsFollowNotesReminderAndCategory) {
  AppointmentFields made = fields(u"All", at(6, 9), at(6, 10));
  made.body = u"bring cake";
  made.reminder_set = true;
  put(made);
  EXPECT_EQ(rows(agenda(6)), Lines{"9:00-10:00|nr|All"});
  settings.categoryiconflag = 1;
  settings.alarmflag = 0;
  const DayAgenda plain = agenda(6);
  EXPECT_EQ(rows(plain), Lines{"9:00-10:00|nc|All"});
  EXPECT_TRUE(plain.notes_seen);
  EXPECT_FALSE(plain.reminder_seen);
  EXPECT_FALSE(plain.category_icon_seen) << "no label has a record";
  settings.category_props = {{u"(None)", 1, 0}};
  EXPECT_TRUE(agenda(6).category_icon_seen);
}

// What is filtered out still widens the icon column.
TEST_F(DayAgendaTest, AFilteredDayAndAnEmptyOneDiffer) {
  AppointmentFields made = fields(u"Secret", at(6, 9), at(6, 10));
  made.categories = u"Hidden";
  made.body = u"notes";
  made.reminder_set = true;
  put(made);
  const DayAgenda filtered = agenda(6);
  EXPECT_EQ(rows(filtered), Lines{"No Appointments||"});
  EXPECT_EQ(filtered.emptiness, DayAgenda::Emptiness::all_filtered);
  EXPECT_TRUE(filtered.notes_seen && filtered.reminder_seen);
  EXPECT_EQ(filtered.rows[0].oid, -1);
  EXPECT_EQ(filtered.row_ends[0], at(7, 0)) << "hour 24 of the day";
  EXPECT_EQ(agenda(7).emptiness, DayAgenda::Emptiness::nothing_found);
  EXPECT_EQ(rows(full_agenda(nullptr, day(6), settings, passes)), Lines{"No Appointments||"});
  hidden = u"hidden";
  EXPECT_EQ(agenda(6).emptiness, DayAgenda::Emptiness::has_rows);
}

TEST_F(DayAgendaTest, WrappedRowsKeepTheShadeAbove) {
  const auto row = [](TextView time) { return DayRow{Text(time), {}, {}, 1, {}, false}; };
  EXPECT_EQ(build_row_shades({row(u"9"), row(u""), row(u"9"), row(u"9"), row(u"")}),
            (std::vector<int>{1, 1, 0, 1, 1}));
}

TEST_F(DayAgendaTest, CompactRowsAreTheSameAppointments) {
  settings.showlocation = 1;
  AppointmentFields made = fields(u"First", at(6, 9), at(6, 10));
  made.location = u"Room";
  put(made);
  made = fields(u"Secret", at(6, 10), at(6, 11));
  made.categories = u"Hidden";
  put(made);
  const auto compact = [this](int of_november) {
    return compact_agenda(session.CalendarItems().get(), day(of_november), true, passes);
  };
  EXPECT_EQ(compact(6), (std::vector<CompactRow>{{u"9:00-10:00", u"First", 0}}));
  EXPECT_EQ(compact(7), (std::vector<CompactRow>{{u"No Appointments", u"", -1}}));
}

// Categories as other programs write them: empty pieces, doubled commas, endless ones.
TEST_F(DayAgendaTest, OddCategoryTextsAreTakenAsTheyStand) {
  settings.category_props = {{u"", 1, 0}, {u"Work", 2, 0}};
  settings.categoryiconflag = 1;
  const Text endless(10000, u'x');
  const std::pair<Text, Text> cases[] = {{u"", u"(None)"},    {u",", u""},
                                         {u",,Work", u""},    {u"Work,,Home,", u"Work"},
                                         {endless, endless},  {endless + u",Work", endless},
                                         {u" Work", u" Work"}};
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
