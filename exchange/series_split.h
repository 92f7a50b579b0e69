// A series with a change of one occurrence and all that follow becomes several series, each of
// which a day can show; their texts still say what the file said.
#pragma once

#include <string>
#include <vector>

#include "exchange/event_reader.h"

namespace orvello {

struct FollowingChange {
  ReadEvent event;
  std::string text;  // of its component
  int line = 0;      // where that stands
};

// A series that took over from another one.
struct SeriesPart {
  LocalSeconds from;         // the first occurrence it stands for, in the first series' time
  std::int64_t shift = 0;    // what the change adds to each of them, in seconds
  AppointmentRecord record;  // residue: the change's text alone
};

// Cuts the series off where the first change begins and answers what goes on from there. Exceptions
// (in order) go with their occurrences. A change of an occurrence that the series lacks is left in
// `changes`.
std::vector<SeriesPart> split_series(ReadEvent& master, std::vector<FollowingChange>& changes,
                                     EventContext& context);

// One occurrence more, which makes a series of a single appointment.
void add_date(AppointmentRecord& record, LocalSeconds moment);

}  // namespace orvello
