// Series that a file said as one, with changes of all that follow, and that are several here.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "exchange/event_reader.h"
#include "exchange/first_fault.h"
#include "store/record_store.h"

namespace orvello {

bool same_rule(const std::optional<RecurrencePattern>& a,
               const std::optional<RecurrencePattern>& b);

// A series of nothing but its start, on which changed occurrences hang that no rule produces.
bool is_start_alone(const AppointmentRecord& record);

class SeriesFamilies {
 public:
  using Read = std::function<std::optional<ReadEvent>(const Component& text)>;
  SeriesFamilies(RecordStore& store, Read read)
      : store_(store), read_(std::move(read)), failed_(store) {}

  // Whether the series of that UID and those that take over from it all recur as they were read: if
  // one of them does not, or is gone, each goes out by itself.
  bool stands(const std::string& uid);
  const FirstFault& fault() const { return failed_; }

 private:
  std::optional<AppointmentRecord> record_of(const std::string& uid);
  bool is_as_read(const AppointmentRecord& record, bool first);

  RecordStore& store_;
  Read read_;
  FirstFault failed_;
  std::map<std::string, bool> known_;
};

}  // namespace orvello
