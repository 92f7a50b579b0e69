#include "store/rename_label.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "resources/strings.h"
#include "settings/category_text.h"
#include "store/item_operations.h"
#include "store/wait_cursor.h"

namespace orvello {
namespace {

using Items = std::vector<LabelledItem>;

bool carries(TextView categories, TextView label) {
  return with_label_renamed(categories, label, label).has_value();
}

std::optional<Text> categories_of(const Appointment& item) {
  AppointmentFields fields;
  if (!item.read(fields)) return std::nullopt;
  return fields.categories;
}

// The appointment, and the occurrence that is meant; both null when it is gone or cannot be read.
struct Fetched {
  Fetched(StoreSession& session, const LabelledItem& item) : series(session.ItemFromOid(item.oid)) {
    one = series.get();
    if (!series || item.occurrence == kNoDate) return;
    OccurrenceError error = OccurrenceError::none;
    const auto pattern = series->pattern();
    if (pattern) occurrence = pattern->occurrence(item.occurrence, error);
    gone = error == OccurrenceError::not_found;
    one = occurrence.get();
  }
  std::unique_ptr<Appointment> series, occurrence;
  Appointment* one = nullptr;
  bool gone = false;
};

// The changed occurrences that carry the label, and all of them where the series does, since those
// that are filed like it go with it. False: failure.
bool add_occurrences(StoreSession& session, std::int32_t oid, TextView label, bool of_series,
                     Items& items) {
  const auto item = session.ItemFromOid(oid);
  const auto pattern = item && item->is_recurring() ? item->pattern() : nullptr;
  const auto count = pattern ? pattern->exception_count() : std::nullopt;
  if (!count) return item && !item->is_recurring();
  for (int i = 1; i <= *count; ++i) {
    const auto exception = pattern->exception(i);
    if (!exception) return false;
    if (exception->deleted) continue;
    OccurrenceError error = OccurrenceError::none;
    const auto one = pattern->occurrence(exception->start, error);
    const auto categories = one ? categories_of(*one) : std::nullopt;
    if (!categories) return false;
    if (of_series || carries(*categories, label))
      items.push_back({oid, exception->start, *categories});
  }
  return true;
}

// Writes what each is to carry, unless it does. False: failure.
bool write_labels(StoreSession& session, const LabelledItem& item, const Text& wanted) {
  const Fetched fetched(session, item);
  AppointmentFields fields;
  if (!fetched.one || !fetched.one->read(fields)) return false;
  if (fields.categories == wanted) return true;
  fields.categories = wanted;
  return fetched.one->write(fields, {AppointmentField::categories}).empty() && fetched.one->save();
}

bool gives_states(StoreSession& session, const Items& items) {
  const auto item = items.empty() ? nullptr : session.ItemFromOid(items.front().oid);
  return item && item->state();
}

class RenamedLabel : public EditStep::Beside {
 public:
  RenamedLabel(StoreSession& session, RenamedPlaces places, Items items)
      : session_(session), places_(std::move(places)), items_(std::move(items)) {}

  std::optional<bool> is_now(bool after) override {
    for (const LabelledItem& item : items_) {
      const Fetched fetched(session_, item);
      const auto now = fetched.one ? categories_of(*fetched.one) : std::nullopt;
      if (!now) {
        const bool gone = fetched.series ? fetched.gone : session_.problem().empty();
        return gone ? std::optional(false) : std::nullopt;
      }
      if (*now != wanted(item, after)) return false;
    }
    return true;
  }

  bool bring(bool after) override {
    return std::all_of(items_.begin(), items_.end(),
                       [&](const LabelledItem& item) {
                         return write_labels(session_, item, wanted(item, after));
                       }) &&
           add_places(after);
  }
  void settle(bool after) override {
    if (std::exchange(moved_, false)) places_.settle(after);
  }
  std::size_t items() const override { return items_.size(); }

  // Writes the items and remembers each one's whole state in the step, in place of its text.
  bool rename_in(EditStep& step) {
    const Items items = std::exchange(items_, {});
    for (auto first = items.begin(); first != items.end();) {
      const auto next = std::find_if(first, items.end(),
                                     [&](const auto& item) { return item.oid != first->oid; });
      const auto item = session_.ItemFromOid(first->oid);
      const EditStep::State before = item ? item->state() : nullptr;
      if (!before || !std::all_of(first, next, [&](const LabelledItem& one) {
            return write_labels(session_, one, wanted(one, true));
          }))
        return false;
      const EditStep::State after = item->state();
      if (!after) return false;
      step.add(first->oid, before, after);
      first = next;
    }
    return add_places(true);
  }

 private:
  bool add_places(bool after) {
    moved_ = true;
    return places_.add(after);
  }
  Text wanted(const LabelledItem& item, bool after) const {
    if (!after) return item.before;
    return with_label_renamed(item.before, places_.label(), places_.name()).value_or(item.before);
  }

  StoreSession& session_;
  RenamedPlaces places_;
  Items items_;
  bool moved_ = false;  // the places know both names
};

}  // namespace

std::optional<std::vector<LabelledItem>> items_with_label(StoreSession& session, TextView label) {
  Items single, items;
  std::vector<LabelledItem> series;
  const auto all = session.CalendarItems();
  if (!all) return std::nullopt;
  all->set_include_recurrences(false);
  all->want({AppointmentField::categories});
  const bool whole = each_item(*all, {}, [&](const StoreItem& item) {
    const AppointmentSummary& summary = *item.summary;
    if (summary.recurring)
      series.push_back({summary.oid, kNoDate, summary.categories});
    else if (carries(summary.categories, label))
      items.push_back({summary.oid, kNoDate, summary.categories});
  });
  if (!whole) return std::nullopt;
  for (LabelledItem& one : series) {
    const bool carried = carries(one.before, label);
    const std::int32_t oid = one.oid;
    if (carried) items.push_back(std::move(one));
    if (!add_occurrences(session, oid, label, carried, items)) return std::nullopt;
  }
  return items;
}

std::optional<int> rename_label(const OperationContext& context, const LabelPlaces& places,
                                TextView label, TextView name) {
  const WaitCursor waiting(context.window);
  StoreSession& session = context.session;
  const auto failed = [&]() -> std::optional<int> {
    context.boxes.beep();
    context.boxes.show(with_reason(session, load_string(StringId::box_not_renamed, context.boxes)),
                       load_string(StringId::box_error, context.boxes), BoxIcon::warning);
    return std::nullopt;
  };
  auto renamed = RenamedPlaces::look(places, label, name);
  auto items = renamed ? items_with_label(session, label) : std::nullopt;
  if (!items) return failed();
  const int count = static_cast<int>(std::count_if(
      items->begin(), items->end(), [&](const auto& item) { return carries(item.before, label); }));
  // Of a few, whole states are remembered, so that what was done before can be undone after it.
  const bool few = items->size() <= EditHistory::kMostStates / 2 && gives_states(session, *items);
  auto beside = std::make_unique<RenamedLabel>(session, std::move(*renamed), std::move(*items));
  EditStep step;
  const bool done = session.app()->all_or_nothing(
      [&] { return few ? beside->rename_in(step) : beside->bring(true); });
  beside->settle(done);
  if (!done) return failed();
  step.add_beside(std::move(beside));
  context.history.keep(std::move(step));
  return count;
}

}  // namespace orvello
