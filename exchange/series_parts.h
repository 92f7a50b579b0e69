// How the kept text of a series that was split tells what is shown: behind the component as it came
// stands a second one with the recurrence of the record, which names the series that go on from it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "exchange/series_split.h"

namespace orvello {

struct PartName {
  LocalSeconds from;  // as in SeriesPart
  std::int64_t shift = 0;
  std::string uid;  // of its record
};

// The second component of a residue; empty where it has none.
std::string_view shown_component(std::string_view residue);

// Those of the series of that UID: one that was divided off has the same text, but none of them.
std::vector<PartName> parts_of(std::string_view residue, const std::string& uid);

// `text` is an event; the parts' records have their UIDs.
std::string with_part_names(std::string text, const std::string& uid,
                            const std::vector<SeriesPart>& parts);

// The UID of the record for a part.
std::string part_uid(const std::string& uid, LocalSeconds from);

}  // namespace orvello
