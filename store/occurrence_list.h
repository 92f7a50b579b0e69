// The occurrences a query found: plain numbers with a reference to what they show, so that tens of
// thousands cost no allocation each.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "ports/calendar_store.h"

namespace orvello {

class OccurrenceList {
 public:
  using Summary = std::shared_ptr<const AppointmentSummary>;

  // Occurrences added from now on show `summary`.
  void show(Summary summary) { summaries_.push_back({std::move(summary), 0}); }
  // One row for `many` occurrences: as StoreItem::many.
  void add_many(Summary summary, LocalSeconds start, LocalSeconds end, std::int64_t many) {
    summaries_.push_back({std::move(summary), many});
    add(start, end);
  }
  void add(LocalSeconds start, LocalSeconds end) {
    rows_.push_back({start, end, summaries_.back().summary->oid,
                     static_cast<std::uint32_t>(summaries_.size() - 1)});
  }

  void sort_by_start(bool descending);     // ties: by end, then by oid
  std::vector<std::int32_t> oids() const;  // ascending, each once
  std::size_t size() const { return rows_.size(); }
  StoreItem item(std::size_t index) const;

 private:
  struct Row {
    LocalSeconds start;
    LocalSeconds end;
    std::int32_t oid;
    std::uint32_t summary;
  };
  struct Shown {
    Summary summary;
    std::int64_t many;
  };
  void bucket_by_slot();

  std::vector<Row> rows_;
  std::vector<bool> slot_ends_;  // while sorting
  std::vector<Shown> summaries_;
};

}  // namespace orvello
