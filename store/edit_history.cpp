#include "store/edit_history.h"

#include <algorithm>
#include <utility>

#include "store/item_operations.h"

namespace orvello {
namespace {

enum class Standing { as_told, otherwise, unknown };

// Whether the store has the item in this state, or none where that is null. Where it `keeps` them,
// what can only be compared is replaced by what can come back.
Standing standing_of(StoreSession& session, std::int32_t oid, EditStep::State& state, bool keeps) {
  const auto item = session.ItemFromOid(oid);
  EditStep::State now = item ? item->state() : nullptr;
  if (item ? !now : !session.problem().empty()) return Standing::unknown;
  if (!state || !now) return !state && !now ? Standing::as_told : Standing::otherwise;
  if (!now->same_as(*state) && !state->same_as(*now)) return Standing::otherwise;
  if (keeps) state = std::move(now);
  return Standing::as_told;
}

}  // namespace

bool EditStep::knows(std::int32_t oid) const {
  return std::any_of(items_.begin(), items_.end(),
                     [&](const Item& item) { return item.oid == oid; });
}

void EditStep::before(const Appointment& item) {
  if (item.oid() == 0 || knows(item.oid())) return;
  items_.push_back({item.oid(), item.state(), nullptr});
  whole_ = whole_ && items_.back().before;
}

void EditStep::made(std::int32_t oid) {
  if (!knows(oid)) items_.push_back({oid, nullptr, nullptr});
}

void EditStep::finish(StoreSession& session) {
  for (Item& one : items_) {
    const auto item = session.ItemFromOid(one.oid);
    one.after = item ? item->state() : nullptr;
    whole_ = whole_ && (item ? one.after != nullptr : session.problem().empty());
  }
}

void EditStep::add(std::int32_t oid, State before, State after) {
  items_.push_back({oid, std::move(before), std::move(after)});
}

std::size_t EditStep::states() const {
  return static_cast<std::size_t>(
      std::count_if(items_.begin(), items_.end(), [](const Item& item) { return item.before; }));
}

void EditHistory::keep(EditStep step) {
  undone_.clear();
  if (!step.whole_) return done_.clear();
  if (step.items_.empty() && !step.beside_) return;
  done_.push_back(std::move(step));
  keep_within_limits();
}

// What was done first goes first, and so does what would be redone last.
void EditHistory::keep_within_limits() {
  const auto total = [](const std::deque<EditStep>& steps, auto count) {
    std::size_t sum = 0;
    for (const EditStep& step : steps) sum += count(step);
    return sum;
  };
  const auto items = [](const EditStep& step) { return step.items(); };
  const auto states = [](const EditStep& step) { return step.states(); };
  while (done_.size() > kMostSteps || total(done_, items) > kMostItems ||
         total(done_, states) > kMostStates)
    done_.pop_front();
  const auto kept = [](const EditStep& step) { return step.items_.size(); };
  while (total(undone_, kept) > kMostStates || total(undone_, items) > kMostItems)
    undone_.pop_front();
}

bool EditHistory::undo(MessageBoxes& boxes) {
  if (!can_undo()) return false;
  EditStep& step = done_.back();
  const Outcome outcome = bring(step, false);
  if (outcome == Outcome::done) {
    if (!step.beside_ || step.beside_->can_redo())
      undone_.push_back(std::move(step));
    else
      undone_.clear();
  }
  if (outcome != Outcome::failed) done_.pop_back();
  keep_within_limits();
  return tell(boxes, outcome, StringId::box_not_undone);
}

bool EditHistory::redo(MessageBoxes& boxes) {
  if (!can_redo()) return false;
  const Outcome outcome = bring(undone_.back(), true);
  if (outcome == Outcome::done) done_.push_back(std::move(undone_.back()));
  if (outcome != Outcome::failed) undone_.pop_back();
  return tell(boxes, outcome, StringId::box_not_redone);
}

// Items go before others come back, which may need what was theirs.
EditHistory::Outcome EditHistory::bring(EditStep& step, bool after) {
  if (!session_.app()) return Outcome::failed;
  const auto from = after ? &EditStep::Item::before : &EditStep::Item::after;
  const auto to = after ? &EditStep::Item::after : &EditStep::Item::before;
  const bool keeps = step.items_.size() <= kMostStates;
  bool moves_beside = false;
  Standing standing = Standing::as_told;
  const bool done = session_.app()->all_or_nothing([&] {
    for (EditStep::Item& one : step.items_) {
      standing = standing_of(session_, one.oid, one.*from, keeps);
      if (standing != Standing::as_told) return false;
    }
    const auto beside = step.beside_ ? step.beside_->is_now(!after) : std::optional(true);
    standing = !beside ? Standing::unknown : *beside ? Standing::as_told : Standing::otherwise;
    if (standing != Standing::as_told) return false;
    for (const EditStep::Item& one : step.items_) {
      if (one.*to || !(one.*from)) continue;
      const auto item = session_.ItemFromOid(one.oid);
      if (!item || !item->remove()) return false;
    }
    return std::all_of(step.items_.begin(), step.items_.end(),
                       [&](const EditStep::Item& one) {
                         return !(one.*to) || session_.app()->restore(*(one.*to));
                       }) &&
           (!step.beside_ || (moves_beside = true, step.beside_->bring(after)));
  });
  if (moves_beside) step.beside_->settle(done == after);
  if (done) return Outcome::done;
  return standing == Standing::otherwise ? Outcome::changed_elsewhere : Outcome::failed;
}

bool EditHistory::tell(MessageBoxes& boxes, Outcome outcome, StringId failure) {
  if (outcome == Outcome::done) return true;
  boxes.beep();
  boxes.show(outcome == Outcome::failed ? with_reason(session_, load_string(failure, boxes))
                                        : load_string(StringId::box_changed_since, boxes),
             load_string(StringId::box_error, boxes), BoxIcon::warning);
  return false;
}

}  // namespace orvello
