// Undo and redo of what a person did to appointments in this run: saved, deleted, pasted, moved,
// imported. User-interface thread.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

#include "base/text.h"
#include "ports/message_box.h"
#include "resources/strings.h"
#include "store/store_session.h"

namespace orvello {

// What one action does to appointments, while it is done. In its transaction, each item is told
// before it is changed, what it made afterwards, and then finish().
class EditStep {
 public:
  using State = std::shared_ptr<const AppointmentState>;

  // What an action did beside appointments. Lives as long as the step, and so must what it changes.
  class Beside {
   public:
    virtual ~Beside() = default;
    // Whether it is as it was left, after the action or before it. Nothing: failure.
    virtual std::optional<bool> is_now(bool after) = 0;
    virtual bool bring(bool after) = 0;
    // Told after bring(), when it is certain how things are: as after the action, or before it.
    virtual void settle(bool /*after*/) {}
    virtual bool can_redo() const { return true; }
    // How many items it remembers by itself.
    virtual std::size_t items() const { return 0; }
  };

  // The item as it was; unsaved ones have nothing to come back to.
  void before(const Appointment& item);
  void made(std::int32_t oid);
  // Reads what has come of the items.
  void finish(StoreSession& session);

  // In place of these, for who knows it all: null where it was not, or is not, there. A state that
  // can only be compared may stand for what came of it.
  void add(std::int32_t oid, State before, State after);
  void add_beside(std::unique_ptr<Beside> beside) { beside_ = std::move(beside); }
  void give_up() { whole_ = false; }  // it could not be remembered

 private:
  friend class EditHistory;
  struct Item {
    std::int32_t oid;
    State before, after;
  };
  bool knows(std::int32_t oid) const;
  std::size_t states() const;
  std::size_t items() const { return items_.size() + (beside_ ? beside_->items() : 0); }

  std::vector<Item> items_;
  std::unique_ptr<Beside> beside_;
  bool whole_ = true;  // every state could be had
};

class EditHistory {
 public:
  // What it remembers at most, all steps together: of items what tells whether they are as they
  // were left, and whole states. A single step of more can't be taken back, or redone.
  static constexpr std::size_t kMostSteps = 50, kMostItems = 150000, kMostStates = 12000;

  explicit EditHistory(StoreSession& session) : session_(session) {}
  EditHistory(const EditHistory&) = delete;
  EditHistory& operator=(const EditHistory&) = delete;

  // What was done, and cannot be redone any more is what was undone. After a step that could not be
  // remembered, as in a store that gives no states, there is nothing to undo: not even what was
  // done before, which is not what a person would expect.
  void keep(EditStep step);

  bool can_undo() const { return !done_.empty(); }
  bool can_redo() const { return !undone_.empty(); }
  // One step, in one transaction. False when nothing was changed, which has been told: of an
  // appointment that is not as the step left it, which is then forgotten; or the store failed.
  bool undo(MessageBoxes& boxes);
  bool redo(MessageBoxes& boxes);

 private:
  enum class Outcome { done, changed_elsewhere, failed };
  Outcome bring(EditStep& step, bool after);
  bool tell(MessageBoxes& boxes, Outcome outcome, StringId failure);
  void keep_within_limits();

  StoreSession& session_;
  std::deque<EditStep> done_, undone_;
};

}  // namespace orvello
