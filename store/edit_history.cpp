#include "store/edit_history.h"

#include <algorithm>
#include <utility>

#include "store/item_operations.h"

namespace orvello {
namespace {

constexpr std::size_t kMostSteps = 50;

// Whether the store has the item in this state, or none where that is null. `failed` when it could
// not be told.
bool is_in_state(StoreSession& session, std::int32_t oid, const AppointmentState* state,
                 bool& failed) {
  const auto item = session.ItemFromOid(oid);
  const auto now = item ? item->state() : nullptr;
  failed = failed || (item ? !now : !session.problem().empty());
  return state ? now && now->same_as(*state) : !item;
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

void EditHistory::keep(EditStep step) {
  undone_.clear();
  if (!step.whole_) return done_.clear();
  if (step.items_.empty()) return;
  done_.push_back(std::move(step));
  if (done_.size() > kMostSteps) done_.pop_front();
}

bool EditHistory::undo(MessageBoxes& boxes) {
  if (!can_undo()) return false;
  const Outcome outcome = bring(done_.back(), &EditStep::Item::after, &EditStep::Item::before);
  if (outcome == Outcome::done) undone_.push_back(std::move(done_.back()));
  if (outcome != Outcome::failed) done_.pop_back();
  return tell(boxes, outcome, u"Nothing was undone.");
}

bool EditHistory::redo(MessageBoxes& boxes) {
  if (!can_redo()) return false;
  const Outcome outcome = bring(undone_.back(), &EditStep::Item::before, &EditStep::Item::after);
  if (outcome == Outcome::done) done_.push_back(std::move(undone_.back()));
  if (outcome != Outcome::failed) undone_.pop_back();
  return tell(boxes, outcome, u"Nothing was redone.");
}

// Items go before others come back, which may need what was theirs.
EditHistory::Outcome EditHistory::bring(const EditStep& step, EditStep::State EditStep::Item::*from,
                                        EditStep::State EditStep::Item::*to) {
  if (!session_.app()) return Outcome::failed;
  bool changed = false, failed = false;
  const bool done = session_.app()->all_or_nothing([&] {
    for (const EditStep::Item& one : step.items_)
      changed = !is_in_state(session_, one.oid, (one.*from).get(), failed) || changed;
    if (changed || failed) return false;
    for (const EditStep::Item& one : step.items_) {
      if (one.*to || !(one.*from)) continue;
      const auto item = session_.ItemFromOid(one.oid);
      if (!item || !item->remove()) return false;
    }
    return std::all_of(step.items_.begin(), step.items_.end(), [&](const EditStep::Item& one) {
      return !(one.*to) || session_.app()->restore(*(one.*to));
    });
  });
  if (done) return Outcome::done;
  return changed && !failed ? Outcome::changed_elsewhere : Outcome::failed;
}

bool EditHistory::tell(MessageBoxes& boxes, Outcome outcome, TextView failure) {
  if (outcome == Outcome::done) return true;
  boxes.beep();
  boxes.show(outcome == Outcome::failed
                 ? with_reason(session_, failure)
                 : Text(u"This appointment was changed elsewhere since; what was done here before "
                        u"that cannot be taken back."),
             u"Error", BoxIcon::warning);
  return false;
}

}  // namespace orvello
