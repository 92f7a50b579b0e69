// A search for words in appointments: what was typed, the folded texts of a whole calendar, and
// what was found in the order in which people want it.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "ports/calendar_store.h"
#include "store/row_key.h"

namespace orvello {

// Words that must all be there, in any order, each also as a part of a longer one; what stands in
// quotes is one part with its blanks. Letter case and accents do not matter.
class TextQuery {
 public:
  explicit TextQuery(TextView typed);
  bool empty() const { return parts_.empty(); }
  bool matches(const StoreTexts& texts) const;
  bool found_in(std::string_view folded) const;
  const std::vector<std::string>& parts() const { return parts_; }  // folded

 private:
  std::vector<std::string> parts_;
};

// Subject, place, categories, attendees and notes as they are searched, a line each: no part of a
// query reaches from one into another.
void append_searched(std::string& out, const StoreTexts& texts);

struct TextHit {
  StoreItem item;     // its summary has subject, location, categories, all_day and recurring
  bool past = false;  // ended before now
  RowKey key() const { return {item.summary->oid, item.many == 0 ? item.start : kNoDate}; }
};

struct TextHits {
  std::vector<TextHit> first;  // no more than were asked for
  std::size_t count = 0;       // of all
};

// The texts of all appointments, in the order in which a store gives them.
class TextIndex {
 public:
  void add(const StoreTexts& texts);
  // What has not ended yet, in its order, then what has, the latest first; what has no dates comes
  // last. A series in whose own texts it is found is one hit, else each changed occurrence is.
  TextHits find(const TextQuery& query, CalendarDate now, std::size_t most) const;

 private:
  struct Entry {
    LocalSeconds start, end;
    std::size_t text, shown;  // where they begin in `texts_` and `shown_`
    std::int32_t oid;
    bool dated, all_day, recurring, changed_occurrence, many;
  };
  struct Needle;
  std::vector<std::uint32_t> matching(const TextQuery& query) const;
  bool is_of_series(const Entry& series, const Entry& entry) const;
  TextHit hit(std::size_t entry, LocalSeconds now) const;

  std::vector<Entry> entries_;
  std::string texts_;  // folded
  std::string shown_;  // subject, location and categories, UTF-8, a zero behind each
  std::array<std::size_t, 256> bytes_{};  // how often each is in `texts_`
};

}  // namespace orvello
