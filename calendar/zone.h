// Time zones as an iCalendar file describes them: observances, each with an onset and two offsets.
// A zone is data: what a file described is kept beside the appointments, what the device's database
// knows is compiled from there (zone_file.h). Clock changes follow RFC 5545 3.6.5: a local time
// that is skipped is read with the offset before the gap (and so shows at the moved time), one that
// occurs twice means the first.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "calendar/rule.h"

namespace orvello {

struct Observance {
  LocalSeconds start;   // onset, local to offset_from
  int offset_from = 0;  // seconds east of Greenwich before the onset
  int offset_to = 0;    // and after it
  std::optional<Rule> rule;
  std::vector<LocalSeconds> dates;  // further onsets, sorted
  friend bool operator==(const Observance&, const Observance&) = default;
};

class Zone {
 public:
  Zone() = default;  // UTC
  // Leaves out an observance with an offset beyond 26 hours, and what lies beyond some thousand
  // observances or changes. Without any the zone is at UTC.
  Zone(std::string name, std::vector<Observance> observances);

  const std::string& name() const { return name_; }
  const std::vector<Observance>& observances() const { return observances_; }
  UtcSeconds to_utc(LocalSeconds local) const;
  LocalSeconds from_utc(UtcSeconds utc) const;
  // The offsets that its changes brought between two moments, each once and in order; the one that
  // holds throughout where there was no change.
  std::vector<int> offsets_between(UtcSeconds from, UtcSeconds to) const;

  // One line of ASCII and back, for keeping with the appointments.
  std::string definition() const;
  static Result<Zone> parse(std::string_view definition);

 private:
  struct Transition {
    UtcSeconds utc;      // the onset
    LocalSeconds local;  // the first local time that is read with the new offset
    int offset;
  };

  std::string name_ = "UTC";
  std::vector<Observance> observances_;
  // In order, computed once. Rules without end are expanded to 2200.
  std::vector<Transition> transitions_;
  int first_offset_ = 0;
};

}  // namespace orvello
