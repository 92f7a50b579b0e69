#include "store/pim/pim_items.h"

#include "store/series.h"

namespace orvello {
namespace {

constexpr TextView kByStart = u"[Start]";

}  // namespace

void PimItems::set_include_recurrences(bool include) {
  occurrences_ = include;
  prepared_ = false;
}

void PimItems::sort(TextView property, bool descending) {
  if (property != kByStart) return;
  sorted_ = true;
  descending_ = descending;
  prepared_ = false;
}

// Of a collection in order of start alone the platform shows occurrences.
bool PimItems::prepare() {
  if (prepared_ || !items_) return true;
  prepared_ =
      items_.put(PimName::include_recurrences, PimValue::flag(occurrences_)) &&
      (!(sorted_ || occurrences_) || items_.call(PimName::sort, PimValue::text(kByStart),
                                                 PimValue::flag(descending_ && !occurrences_)));
  return prepared_;
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
  if (stopped()) return false;
  if (!prepare()) fail();
  return !failed_;
}

bool PimItems::stopped() {
  if (!stop_ || !stop_()) return false;
  given_up_ = true;
  fail();
  return true;
}

// Null: nothing passes, as with a text that the platform cannot read. Without a value: failure.
std::optional<PimObject> PimItems::restricted(TextView restriction) {
  if (!items_) return std::optional<PimObject>(std::in_place);
  auto part = items_.made_by(PimName::restrict_to, PimKind::items, PimValue::text(restriction));
  if (!part && items_.last_result() == E_INVALIDARG) part.emplace();
  return part;
}

std::unique_ptr<StoreItems> PimItems::restrict_to(TextView restriction) {
  if (!begin()) return nullptr;
  auto part = restricted(restriction);
  if (!part) return fail(), nullptr;
  if (stopped()) return nullptr;  // it may have taken long
  auto items = std::make_unique<PimItems>(std::move(*part), form_, numbers_, time_, cannot_read_);
  items->wanted_ = wanted_;
  items->stop_ = stop_;
  items->occurrences_ = occurrences_;
  items->sorted_ = sorted_;
  items->descending_ = descending_;
  items->prepared_ = true;
  return items;
}

std::optional<StoreItem> PimItems::find(TextView restriction) {
  if (!begin() || !items_) return std::nullopt;
  if (restriction.empty()) return count_from(items_);  // the platform has no such text
  if (!backwards()) {
    walk_ = Walk::found;
    return answer(items_.made_by(PimName::find, PimKind::appointment, PimValue::text(restriction)));
  }
  auto part = restricted(restriction);
  if (!part) return fail();
  part_ = std::move(*part);
  return part_ ? count_from(part_) : std::nullopt;
}

std::optional<StoreItem> PimItems::count_from(const PimObject& collection) {
  const auto count = collection.number(PimName::count);
  if (!count) return fail();
  walk_ = Walk::counted;
  counted_ = &collection;
  index_ = 0;
  count_ = *count;
  return find_next();
}

// Beyond its end a collection must not be asked.
std::optional<StoreItem> PimItems::find_next() {
  if (walk_ == Walk::ended) return std::nullopt;
  if (walk_ == Walk::found) return answer(items_.made_by(PimName::find_next, PimKind::appointment));
  if (index_ < count_) {
    const std::int32_t place = backwards() ? count_ - index_ : index_ + 1;
    ++index_;
    return answer(counted_->made_by(PimName::item, PimKind::appointment, PimValue::number(place)));
  }
  walk_ = Walk::ended;
  return std::nullopt;
}

std::optional<StoreItem> PimItems::answer(std::optional<PimObject> item) {
  if (!item && walk_ == Walk::found && items_.last_result() == E_INVALIDARG) item.emplace();
  if (!item) return fail();
  if (!*item) {
    if (walk_ == Walk::counted) return fail();
    walk_ = Walk::ended;
    return std::nullopt;
  }
  if (stopped()) return std::nullopt;
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
  // The platform names a time that the clock skips, where records have the one that is shown.
  if (!fields.all_day && time_.skips_on(whole_day(fields.start))) {
    const auto shown =
        time_.shown(to_seconds(fields.start), to_seconds(fields.end), nullptr, false);
    fields.start = to_calendar_date(shown.start);
    fields.end = to_calendar_date(shown.end);
  }
  read.start = fields.start;
  read.end = fields.all_day ? stored_end(fields.end, form_.all_day_end) : fields.end;
  read.summary = make_summary(fields, numbers_.known(*oid), *recurring);
  return read;
}

}  // namespace orvello
