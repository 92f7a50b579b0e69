// A session with a store in memory, and appointments in November 2026 to fill it with.
#pragma once

#include <gtest/gtest.h>

#include "calendar/dates.h"
#include "hosts/headless/headless_ports.h"
#include "hosts/headless/memory_store.h"
#include "store/store_session.h"

namespace orvello {

class StoreTest : public ::testing::Test {
 protected:
  StoreTest() { EXPECT_TRUE(session.Open(nullptr)); }

  static std::int32_t day(int of_november) { return day_number(2026, 11, of_november); }
  static CalendarDate at(int of_november, int hour, int minute = 0) {
    return to_calendar_date(day(of_november) * kSecondsPerDay + hour * 3600 + minute * 60);
  }
  static AppointmentFields fields(TextView subject, CalendarDate start, CalendarDate end) {
    AppointmentFields made;
    made.subject = subject;
    made.start = start;
    made.end = end;
    return made;
  }
  std::int32_t put(const AppointmentFields& fields) {
    const auto item = session.CreateAppointment();
    item->write(fields);
    EXPECT_TRUE(item->save());
    return item->oid();
  }
  // Every day from the start's on, without end.
  std::int32_t put_daily(const AppointmentFields& fields) {
    const auto item = session.CreateAppointment();
    item->write(fields);
    RecurrencePattern pattern;
    pattern.pattern_start_date = static_cast<std::int32_t>(fields.start);
    pattern.start_time = fields.start - pattern.pattern_start_date;
    pattern.end_time = fields.end - static_cast<std::int32_t>(fields.end);
    pattern.duration =
        static_cast<std::int32_t>((to_seconds(fields.end) - to_seconds(fields.start)) / 60);
    item->pattern()->set_fields(pattern);
    EXPECT_TRUE(item->save());
    return item->oid();
  }
  std::unique_ptr<Appointment> occurrence(std::int32_t oid, CalendarDate start) {
    OccurrenceError error;
    return session.ItemFromOid(oid)->pattern()->occurrence(start, error);
  }
  void move_occurrence(std::int32_t oid, CalendarDate start, CalendarDate to, CalendarDate end,
                       TextView subject = u"Moved") {
    const auto one = occurrence(oid, start);
    ASSERT_TRUE(one);
    AppointmentFields changed;
    one->read(changed);
    changed.subject = subject;
    changed.start = to;
    changed.end = end;
    one->write(changed);
    ASSERT_TRUE(one->save());
  }
  // Subject and times of what touches the days, by start: "Trip 5 20:00-8 7:00".
  std::vector<std::string> listed(int first, int last) {
    const auto items = session.CalendarItems();
    items->set_include_recurrences(true);
    items->sort(u"[Start]", false);
    std::vector<std::string> all;
    const Text wanted = format(u"[End] >= <%.0f AND [Start] <= <%.0f",
                               static_cast<double>(day(first)), static_cast<double>(day(last)));
    for (auto item = items->find(wanted); item; item = items->find_next()) {
      SystemTime start, end;
      VariantTimeToSystemTime(item->start, start);
      VariantTimeToSystemTime(item->end, end);
      all.push_back(to_utf8(format(u"%s %d %d:%.2d-%d %d:%.2d", item->summary->subject, start.day,
                                   start.hour, start.minute, end.day, end.hour, end.minute)));
    }
    return all;
  }
  std::vector<std::string> boxes_shown() {
    std::vector<std::string> texts;
    for (const ShownBox& box : boxes.shown)
      texts.push_back(to_utf8(box.caption) + "|" + to_utf8(box.text));
    boxes.shown.clear();
    return texts;
  }

  HeadlessClock clock;
  MemoryStore store{clock};
  HeadlessBoxes boxes;
  StoreSession session{store, boxes};
};

using Lines = std::vector<std::string>;

}  // namespace orvello
