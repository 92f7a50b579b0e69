#include "store/pim/pim_items.h"

#include "store/series.h"

namespace orvello {

void PimItems::set_include_recurrences(bool include) {
  if (items_)
    set_up_ = items_.put(PimName::include_recurrences, PimValue::flag(include)) && set_up_;
}

void PimItems::sort(TextView property, bool descending) {
  if (items_)
    set_up_ =
        items_.call(PimName::sort, PimValue::text(property), PimValue::flag(descending)) && set_up_;
}

std::optional<StoreItem> PimItems::fail() {
  failed_ = true;
  walk_ = Walk::ended;
  if (!given_up_) cannot_read_();
  return std::nullopt;
}

bool PimItems::begin() {
  failed_ = given_up_ = false;
  walk_ = Walk::ended;
  if (!set_up_) fail();
  return !failed_ && !stopped();
}

bool PimItems::stopped() {
  if (!stop_ || !stop_()) return false;
  given_up_ = true;
  fail();
  return true;
}

std::unique_ptr<StoreItems> PimItems::restrict_to(TextView restriction) {
  if (!begin()) return nullptr;
  std::optional<PimObject> part(std::in_place);
  if (items_)
    part = items_.made_by(PimName::restrict_to, PimKind::items, PimValue::text(restriction));
  if (!part && items_.last_result() == E_INVALIDARG) part.emplace();
  if (!part) return fail(), nullptr;
  auto items = std::make_unique<PimItems>(std::move(*part), form_, numbers_, cannot_read_);
  items->wanted_ = wanted_;
  items->stop_ = stop_;
  return items;
}

// The platform has no text that selects everything: then the items are counted.
std::optional<StoreItem> PimItems::find(TextView restriction) {
  if (!begin() || !items_) return std::nullopt;
  if (!restriction.empty()) {
    walk_ = Walk::found;
    return answer(items_.made_by(PimName::find, PimKind::appointment, PimValue::text(restriction)));
  }
  const auto count = items_.number(PimName::count);
  if (!count) return fail();
  walk_ = Walk::counted;
  index_ = 0;
  count_ = *count;
  return find_next();
}

// Beyond its end a collection must not be asked.
std::optional<StoreItem> PimItems::find_next() {
  if (walk_ == Walk::ended || stopped()) return std::nullopt;
  if (walk_ == Walk::found) return answer(items_.made_by(PimName::find_next, PimKind::appointment));
  if (index_ < count_)
    return answer(items_.made_by(PimName::item, PimKind::appointment, PimValue::number(++index_)));
  walk_ = Walk::ended;
  return std::nullopt;
}

// A text that the platform cannot read selects nothing.
std::optional<StoreItem> PimItems::answer(std::optional<PimObject> item) {
  if (!item && walk_ == Walk::found && items_.last_result() == E_INVALIDARG) item.emplace();
  if (!item) return fail();
  if (!*item) {
    if (walk_ == Walk::counted) return fail();
    walk_ = Walk::ended;
    return std::nullopt;
  }
  auto read = item_of(*item);
  return read ? std::move(read) : fail();
}

std::optional<StoreItem> PimItems::item_of(const PimObject& item) {
  using Field = AppointmentField;
  auto wanted = wanted_;
  wanted.take_out(Field::ink);
  wanted.add({Field::start, Field::end, Field::all_day});
  AppointmentFields fields;
  const auto oid = item.number(PimName::oid);
  const auto recurring = item.flag(PimName::is_recurring);
  if (!oid || !recurring || !read_fields(item, wanted, form_, fields)) return std::nullopt;
  StoreItem read;
  read.start = fields.start;
  read.end = fields.all_day ? stored_end(fields.end, form_.all_day_end) : fields.end;
  read.summary = make_summary(fields, numbers_.known(*oid), *recurring);
  return read;
}

}  // namespace orvello
