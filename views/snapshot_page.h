// A page over one kind of snapshot and its layout: the last snapshot serves again as long as it
// shows what is asked for, and the worker draws from it.
#pragma once

#include <memory>

#include "views/grid_page.h"

namespace orvello {

template <typename Snapshot, typename Layout>
class SnapshotPage : public GridPage {
 public:
  using GridPage::GridPage;

  std::optional<ReadOutcome> take(const GridInput& input, bool same_items) final {
    const auto next = std::make_shared<Snapshot>();
    std::optional<ReadOutcome> outcome;
    if (same_items && shows(input.selected) && snapshot_->screen == input.screen) {
      *next = *snapshot_;
    } else {
      if (read(input, *next)) {
        read_ = true;
        outcome = ReadOutcome::whole;
      } else {
        read_ = read_ && shows(input.selected);
        if (read_) keep_read(*next, *snapshot_);
        outcome = read_ ? ReadOutcome::kept : ReadOutcome::nothing;
      }
    }
    next->selected = input.selected;
    next->focus_visible = input.focus_visible;
    next->marked = input.marked;
    layout_ = Layout(*next);
    snapshot_ = next;
    return outcome;
  }

  const Layout& layout() const { return layout_; }
  const Snapshot* snapshot() const { return snapshot_.get(); }  // what was drawn last

 protected:
  // Whether the last snapshot is of this date's page.
  virtual bool shows(const MonthDayYear& date) const = 0;
  // False when the appointments could not be read: the snapshot is then without them.
  virtual bool read(const GridInput& input, Snapshot& snapshot) = 0;
  // Gives a snapshot without appointments those of an earlier one of the same page.
  virtual void keep_read(Snapshot& snapshot, const Snapshot& earlier) const = 0;

  // The drawing of the last snapshot.
  template <typename Draw>
  ViewDrawing drawing_by(Draw draw) const {
    return [draw, snapshot = snapshot_](Canvas& canvas, const std::atomic<int>& draw_state,
                                        const std::function<void()>& progress) {
      return draw(*snapshot, canvas, draw_state, progress);
    };
  }

  std::shared_ptr<const Snapshot> snapshot_;
  Layout layout_;

 private:
  bool read_ = false;  // the last snapshot holds what was read once
};

}  // namespace orvello
