// Whether a calendar's file is sound.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace orvello {

enum class CalendarHealth {
  good,
  damaged,
  missing,    // not there, or without content
  newer,      // written by a newer version
  unreadable  // locked, not permitted, or no file: nothing is known of its content
};

struct CalendarCheck {
  CalendarHealth health = CalendarHealth::unreadable;
  std::string reason;             // a sentence that names the file; empty when it is good
  std::int64_t appointments = 0;  // of a good one
};

// Reads all of the file: each page, the tables against their indices, and what belongs together.
// Waits `patience` for another process's lock.
CalendarCheck check_calendar(const std::string& path,
                             std::chrono::milliseconds patience = std::chrono::seconds(5));

// The same in a moment, for a start: compares the checksums of a file's pages, and looks closer
// when one does not agree. Files larger than `most` bytes are left to whoever reads them.
CalendarCheck glance_at_calendar(const std::string& path, std::int64_t most);

}  // namespace orvello
