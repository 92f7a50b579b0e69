// The zone of a vCalendar 1.0: its TZ and DAYLIGHT properties.
#pragma once

#include <string>

#include "exchange/content_line.h"
#include "ports/clock.h"

namespace orvello {

struct OldZone {
  std::string tzid;        // of the calendar's local times; empty: they are the device's
  std::string definition;  // a VTIMEZONE; empty: the name must do
};

// A device whose own clock runs as the calendar says keeps the times local: writers leave out what
// clock changes their zone has in other years, or altogether.
OldZone zone_of_vcalendar1(const Component& header, const Clock& clock);

}  // namespace orvello
