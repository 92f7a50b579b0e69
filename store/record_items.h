// A folder's items, found when they are first asked for.
#pragma once

#include <memory>
#include <optional>

#include "ports/calendar_store.h"
#include "store/occurrence_list.h"
#include "store/record_calendar_store.h"
#include "store/restriction.h"

namespace orvello {

class RecordItems : public StoreItems {
 public:
  // A collection without appointments (`holds` false) is empty whatever is asked.
  RecordItems(RecordCalendarStore& store, bool holds) : store_(store), holds_(holds) {}

  void set_include_recurrences(bool include) override;
  void sort(TextView property, bool descending) override;
  std::unique_ptr<StoreItems> restrict_to(TextView restriction) override;
  std::optional<StoreItem> find(TextView restriction) override;
  std::optional<StoreItem> find_next() override;
  int count() override;
  std::optional<StoreItem> item(int index) override;
  bool failed() const override { return failed_; }

 private:
  bool search(const DayBounds& bounds, OccurrenceList& list);
  const OccurrenceList* all();  // null: failure

  RecordCalendarStore& store_;
  bool holds_;
  bool occurrences_ = false;
  bool sorted_ = false;
  bool descending_ = false;
  bool failed_ = false;
  DayBounds bounds_;
  std::optional<OccurrenceList> all_;
  OccurrenceList found_;
  std::size_t next_found_ = 0;
};

}  // namespace orvello
