#include "store/record_items.h"

namespace orvello {

void RecordItems::set_include_recurrences(bool include) {
  occurrences_ = include;
  all_.reset();
}

void RecordItems::sort(TextView property, bool descending) {
  if (property != u"[Start]") return;
  sorted_ = true;
  descending_ = descending;
  all_.reset();
}

std::unique_ptr<StoreItems> RecordItems::restrict_to(TextView restriction) {
  auto part = std::make_unique<RecordItems>(store_, holds_);
  const auto bounds = parse_restriction(restriction);
  part->holds_ = holds_ && bounds;
  if (bounds) part->bounds_ = bounds_.within(*bounds);
  part->occurrences_ = occurrences_;
  part->sorted_ = sorted_;
  part->descending_ = descending_;
  if (part->all()) return part;
  failed_ = true;
  return nullptr;
}

std::optional<StoreItem> RecordItems::find(TextView restriction) {
  found_ = {};
  next_found_ = 0;
  failed_ = false;
  const auto bounds = parse_restriction(restriction);
  if (!bounds || !search(bounds_.within(*bounds), found_)) return std::nullopt;
  return find_next();
}

std::optional<StoreItem> RecordItems::find_next() {
  if (next_found_ >= found_.size()) return std::nullopt;
  return found_.item(next_found_++);
}

int RecordItems::count() {
  const OccurrenceList* list = all();
  return list ? static_cast<int>(list->size()) : 0;
}

std::optional<StoreItem> RecordItems::item(int index) {
  const OccurrenceList* list = all();
  if (!list || index < 1 || index > static_cast<int>(list->size())) return std::nullopt;
  return list->item(static_cast<std::size_t>(index - 1));
}

bool RecordItems::search(const DayBounds& bounds, OccurrenceList& list) {
  failed_ = false;
  if (!holds_ || bounds.empty()) return true;
  failed_ = !store_.query(bounds, occurrences_, list);
  if (failed_)
    list = {};
  else if (sorted_)
    list.sort_by_start(descending_);
  return !failed_;
}

// What failed is asked for again the next time.
const OccurrenceList* RecordItems::all() {
  if (!all_ && !search(bounds_, all_.emplace())) all_.reset();
  failed_ = !all_;
  return all_ ? &*all_ : nullptr;
}

}  // namespace orvello
