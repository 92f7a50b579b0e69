// A folder's items: a query finds them, and they are walked from there.
#pragma once

#include <functional>
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
  void want(AppointmentFieldSet fields) override;
  void stop_when(std::function<bool()> stop) override { stop_ = std::move(stop); }
  std::unique_ptr<StoreItems> restrict_to(TextView restriction) override;
  std::optional<StoreItem> find(TextView restriction) override;
  std::optional<StoreItem> find_next() override;
  bool failed() const override { return failed_; }
  bool given_up() const override { return given_up_; }
  AllDayEnd all_day_end() const override { return store_.all_day_end(); }

 private:
  bool search(const DayBounds& bounds, std::optional<OccurrenceList>& list);

  RecordCalendarStore& store_;
  bool holds_;
  bool occurrences_ = false;
  bool sorted_ = false;
  bool descending_ = false;
  AppointmentFieldSet wanted_ = AppointmentFieldSet::all();
  std::function<bool()> stop_;
  bool failed_ = false;
  bool given_up_ = false;
  DayBounds bounds_;
  std::optional<OccurrenceList> all_;    // what a restriction found
  std::optional<OccurrenceList> found_;  // what else was asked for
  const OccurrenceList* walked_ = nullptr;
  std::size_t next_ = 0;
};

}  // namespace orvello
