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

void RecordItems::want(AppointmentFieldSet fields) {
  wanted_ = fields;
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
  part->wanted_ = wanted_;
  part->stop_ = stop_;
  if (part->search(part->bounds_, part->all_)) return part;
  failed_ = true;
  given_up_ = part->given_up_;
  return nullptr;
}

std::optional<StoreItem> RecordItems::find(TextView restriction) {
  failed_ = given_up_ = false;
  walked_ = nullptr;
  next_ = 0;
  const auto bounds = parse_restriction(restriction);
  if (!bounds) return std::nullopt;
  const DayBounds wanted = bounds_.within(*bounds);
  const bool known = all_ && wanted == bounds_;
  if (!known && !search(wanted, found_)) return std::nullopt;
  walked_ = known ? &*all_ : &*found_;
  return find_next();
}

std::optional<StoreItem> RecordItems::find_next() {
  if (!walked_ || next_ >= walked_->size()) return std::nullopt;
  StoreItem item = walked_->item(next_++);
  if (item.summary->all_day) item.end = stored_end(item.end, store_.all_day_end());
  return item;
}

bool RecordItems::search(const DayBounds& bounds, std::optional<OccurrenceList>& list) {
  FetchStop stop(stop_);
  list.emplace();
  if (!holds_ || bounds.empty()) return true;
  failed_ = !store_.query({bounds, occurrences_, wanted_, stop_ ? &stop : nullptr}, *list);
  given_up_ = failed_ && stop.given_up();
  if (failed_)
    list.reset();
  else if (sorted_)
    list->sort_by_start(descending_);
  return !failed_;
}

}  // namespace orvello
