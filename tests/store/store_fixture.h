// A session with a store in memory, and appointments in November 2026 to fill it with.
#pragma once

#include <gtest/gtest.h>

#include "calendar/dates.h"
#include "hosts/headless/headless_ports.h"
#include "hosts/headless/headless_window.h"
#include "hosts/headless/memory_files.h"
#include "hosts/headless/memory_store.h"
#include "store/day_agenda.h"
#include "store/operation_context.h"
#include "tests/appointments.h"

namespace orvello {

class StoreTest : public ::testing::Test {
 protected:
  StoreTest() { EXPECT_TRUE(session.Open(nullptr)); }

  static Day day(int of_november) { return day_of(2026, 11, of_november); }
  static CalendarDate at(int of_november, int hour, int minute = 0) {
    return to_calendar_date(midnight_of(day(of_november)) + hour * 3600 + minute * 60);
  }
  static AppointmentFields fields(TextView subject, CalendarDate start, CalendarDate end) {
    AppointmentFields made;
    made.subject = subject;
    made.start = start;
    made.end = end;
    return made;
  }
  std::int32_t put(const AppointmentFields& fields, const RecurrencePattern* pattern = nullptr) {
    const auto item = session.CreateAppointment();
    write_all(*item, fields);
    if (pattern) item->pattern()->set_fields(*pattern);
    EXPECT_TRUE(item->save());
    return item->oid();
  }
  // From the start's day on without end; a yearly one on 2 November.
  std::int32_t put_series(const AppointmentFields& fields,
                          RecurrenceType type = RecurrenceType::daily) {
    RecurrencePattern pattern;
    pattern.type = type;
    pattern.pattern_start_date = to_calendar_date(whole_day(fields.start));
    pattern.start_time = time_of_day(fields.start);
    pattern.end_time = time_of_day(fields.end);
    pattern.duration =
        static_cast<std::int32_t>((to_seconds(fields.end) - to_seconds(fields.start)) / 60);
    pattern.day_of_month = 2;
    pattern.month_of_year = 11;
    return put(fields, &pattern);
  }
  std::unique_ptr<Appointment> occurrence(std::int32_t oid, CalendarDate start) {
    OccurrenceError error;
    return session.ItemFromOid(oid)->pattern()->occurrence(start, error);
  }
  // The day's appointments: "9:00-10:00 Standup, 12:00-multiday Trip".
  std::string on(int of_november) {
    std::string list;
    const auto rows = compact_agenda(session.CalendarItems().get(), day(of_november), true,
                                     [](TextView) { return true; });
    if (!rows) return "failed";
    for (const CompactRow& row : *rows)
      list += (list.empty() ? "" : ", ") + to_utf8(row.time + u" " + row.subject);
    return list;
  }
  std::string boxes_shown() {
    std::string texts;
    for (const ShownBox& box : boxes.shown)
      texts += to_utf8(box.caption) + "|" + to_utf8(box.text) + "\n";
    boxes.shown.clear();
    return texts;
  }

  HeadlessClock clock;
  MemoryStore store{clock};
  HeadlessBoxes boxes;
  StoreSession session{store, boxes};
  HeadlessWindow window;
  MemoryFiles files;
  EditHistory history{session};
  OperationContext context{session, boxes, window, files, history};
};

}  // namespace orvello
