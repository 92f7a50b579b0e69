// Writes a synthetic calendar for measurements: make_ics SINGLES SERIES FILE.ics
//
// The same arguments always give the same file. Single appointments are spread over 2006-2027,
// series start in 2006-2023 and take turns in six rules.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "calendar/calendar_date.h"

namespace {

using orvello::LocalSeconds;

constexpr const char* kRules[] = {"FREQ=DAILY;INTERVAL=3",
                                  "FREQ=WEEKLY;BYDAY=MO,WE,FR",
                                  "FREQ=MONTHLY;BYMONTHDAY=15",
                                  "FREQ=MONTHLY;BYDAY=2TU",
                                  "FREQ=YEARLY",
                                  "FREQ=WEEKLY;INTERVAL=2;BYDAY=TH;COUNT=200"};
constexpr const char* kCategories[] = {"Work", "Home", "Travel", "Medical"};
constexpr int kHalfHour = 30 * 60;

// Small and the same everywhere, which the standard library's distributions are not (SplitMix64).
class Dice {
 public:
  int below(int limit) {
    std::uint64_t z = (state_ += 0x9E3779B97F4A7C15u);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return static_cast<int>((z ^ (z >> 31)) % static_cast<std::uint64_t>(limit));
  }
  LocalSeconds moment(int years) {
    const auto first = orvello::day_of(2006, 1, 1);
    const int day = below(365 * years), slot = below(48);
    return orvello::midnight_of(first + day) + slot * kHalfHour;
  }

 private:
  std::uint64_t state_ = 7;
};

std::string time_text(LocalSeconds seconds) {
  orvello::SystemTime time;
  orvello::VariantTimeToSystemTime(orvello::to_calendar_date(seconds), time);
  char text[64];
  std::snprintf(text, sizeof text, "%04d%02d%02dT%02d%02d%02d", time.year, time.month, time.day,
                time.hour, time.minute, time.second);
  return text;
}

void write_event(std::ostream& out, int number, LocalSeconds start, int length, const char* rule) {
  out << "BEGIN:VEVENT\r\nUID:e" << number << "@bench\r\nDTSTAMP:20260101T000000Z\r\n"
      << "DTSTART:" << time_text(start) << "\r\nDTEND:" << time_text(start + length)
      << "\r\nSUMMARY:Event " << number << "\r\nLOCATION:Room " << number % 17
      << "\r\nCATEGORIES:" << kCategories[number % 4] << "\r\n";
  if (rule) out << "RRULE:" << rule << "\r\n";
  out << "END:VEVENT\r\n";
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "usage: make_ics SINGLES SERIES FILE.ics\n");
    return 2;
  }
  const int singles = std::atoi(argv[1]), series = std::atoi(argv[2]);
  Dice dice;
  std::ofstream out(argv[3], std::ios::binary);
  out << "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Orvello//make_ics//EN\r\n";
  for (int i = 0; i < singles; ++i) {
    const LocalSeconds start = dice.moment(22);
    write_event(out, i, start, kHalfHour * (1 + dice.below(7)), nullptr);
  }
  for (int i = 0; i < series; ++i)
    write_event(out, singles + i, dice.moment(18), 2 * kHalfHour, kRules[i % 6]);
  out << "END:VCALENDAR\r\n";
  out.close();
  if (out) return 0;
  std::fprintf(stderr, "make_ics: %s could not be written\n", argv[3]);
  return 1;
}
