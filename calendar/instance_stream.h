// Instances one by one, and spans of a series of which only the first are wanted: neither memory
// nor, beyond a limit, time follows how many there are. A file may ask for one every second for
// ever.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <vector>

#include "calendar/rule_expansion.h"
#include "calendar/rule_series.h"

namespace orvello {

// Whether a rule by itself has a moment. The start is one only where the rule produces it.
class RuleMembers {
 public:
  RuleMembers(const Rule& rule, LocalSeconds start);  // keeps its own rule
  RuleMembers(const RuleMembers&) = delete;
  RuleMembers& operator=(const RuleMembers&) = delete;

  bool has(LocalSeconds moment);
  // Up to `most` members in [from, to), ascending.
  void append(LocalSeconds from, LocalSeconds to, std::size_t most, std::vector<LocalSeconds>& out);

 private:
  Rule rule_;  // a count as the end that it comes to
  LocalSeconds start_;
  bool recurs_;
  RuleExpansion expansion_;
};

// What a span holds beyond the instances that were wanted.
struct LeftOut {
  static constexpr std::int64_t kUncounted = -1;  // some; counting them would take too long
  std::int64_t count = 0;
  LocalSeconds first;
  LocalSeconds last;  // uncounted: the span's end
};

class InstanceStream {
 public:
  // Keeps a reference to `set`. `effort` limits how many candidates are looked at in all: about ten
  // million a second.
  InstanceStream(const RecurrenceSet& set, std::int64_t effort);

  // Appends the first `most` instances in [from, to); spans ascend from call to call.
  LeftOut append(LocalSeconds from, LocalSeconds to, std::size_t most,
                 std::vector<LocalSeconds>& out);

 private:
  struct Source {
    Source(const Rule& repeated, LocalSeconds start) : rule(repeated, start) {}
    RuleMembers rule;
    std::vector<LocalSeconds> found;
    std::size_t next = 0;
    LocalSeconds searched_to;
  };

  void seek(LocalSeconds from);
  std::optional<LocalSeconds> head(Source& source, LocalSeconds to);
  std::optional<LocalSeconds> next_candidate(LocalSeconds to);
  bool is_excluded(LocalSeconds moment);

  const RecurrenceSet& set_;
  std::deque<Source> sources_;
  std::deque<RuleMembers> excluded_;
  std::size_t next_date_ = 0;
  LocalSeconds at_;  // candidates before it have been taken
  std::int64_t effort_;
};

// The same of a plain series; the start counts as well.
LeftOut append_some(const PlainSeries& series, LocalSeconds from, LocalSeconds to, std::size_t most,
                    std::vector<LocalSeconds>& out);

}  // namespace orvello
