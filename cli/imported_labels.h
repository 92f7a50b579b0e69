// The category labels that an import brings.
#pragma once

#include <optional>
#include <vector>

#include "store/record_calendar_store.h"

namespace orvello {

// Made before the import: knows which labels are in use by then.
class ImportedLabels {
 public:
  explicit ImportedLabels(RecordCalendarStore& store);

  // The others that are in use now; none where that cannot be told.
  std::vector<Text> fresh() const;

 private:
  RecordCalendarStore& store_;
  std::optional<std::vector<Text>> before_;
};

}  // namespace orvello
