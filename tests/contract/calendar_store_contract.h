// What every calendar store must do, run on each of them.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "store/record_calendar_store.h"
#include "tests/appointments.h"

namespace orvello::test {

// A clock whose local time is two hours ahead in summer and one in winter, by European rules for
// 2026: forward at 02:00 on 29 March, back at 03:00 on 25 October.
class TestClock : public Clock {
 public:
  SystemTime local_time() const override;
  UtcSeconds utc_now() const override { return now; }
  std::string zone_name() const override { return zone; }
  LocalSeconds to_local(UtcSeconds utc) const override;
  UtcSeconds to_utc(LocalSeconds local) const override;

  UtcSeconds now{46200 * kSecondsPerDay};
  std::string zone = "Europe/Berlin";  // any other name is at a fixed offset of `offset`
  int offset = 0;
};

using MakeStore = std::function<std::unique_ptr<RecordCalendarStore>(const Clock&)>;

// What not every store can do.
struct StoreTraits {
  // Zones, UIDs, residue, recurrences that no pattern holds; without them put() says so.
  bool whole_records = true;
  // Categories and recipients of its own for an occurrence; else they are its series'.
  bool rich_occurrences = true;
  // A search fetches all that it will answer; else one item after the other.
  bool fetches_whole = true;
  // Its changes are told by poll(); else by the platform's messages.
  bool tells_by_poll = true;
};

struct StoreKind {
  StoreKind(MakeStore makes, StoreTraits has = {}) : make(std::move(makes)), traits(has) {}
  MakeStore make;
  StoreTraits traits;
};

class CalendarStoreContract : public testing::TestWithParam<StoreKind> {
 protected:
  void SetUp() override;
  const StoreTraits& traits() const { return GetParam().traits; }

  std::int32_t add(TextView subject, CalendarDate start, CalendarDate end, bool all_day = false);
  std::int32_t add_series(TextView subject, const RecurrencePattern& pattern);
  // The subjects and times found, as "subject 46204.375-46204.5" in their order.
  std::vector<std::string> found(const Text& restriction, bool occurrences = true);
  std::vector<std::string> on(std::int32_t day);

  TestClock clock_;
  std::unique_ptr<RecordCalendarStore> store_;
  std::unique_ptr<StoreApplication> app_;
};

// A weekly pattern of an hour at nine from that day on.
RecurrencePattern weekly(std::int32_t day, int mask, int occurrences = 0);
Zone new_york();

}  // namespace orvello::test
