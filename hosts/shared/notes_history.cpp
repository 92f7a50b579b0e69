#include "hosts/shared/notes_history.h"

#include <algorithm>
#include <utility>

namespace orvello {
namespace {

constexpr std::size_t kMostSteps = 200;
constexpr std::size_t kMostUnits = 8u << 20;  // of text in all steps together

}  // namespace

void NotesHistory::clear() {
  undo_.clear();
  redo_.clear();
  typing_ = -1;
}

void NotesHistory::note(NotesState before, int typing) {
  const bool goes_on = typing >= 0 && typing_ >= 0 && before.caret == typing_ && redo_.empty();
  typing_ = typing;
  redo_.clear();
  if (goes_on) return;
  // Of a very long page fewer steps are kept.
  const std::size_t most = kMostUnits / std::max<std::size_t>(before.text.size(), 1);
  const std::size_t others = std::clamp<std::size_t>(most, 1, kMostSteps) - 1;
  if (undo_.size() > others)
    undo_.erase(undo_.begin(), undo_.end() - static_cast<std::ptrdiff_t>(others));
  undo_.push_back(std::move(before));
}

bool NotesHistory::move(std::vector<NotesState>& from, std::vector<NotesState>& to,
                        NotesState& state) {
  if (from.empty()) return false;
  to.push_back(std::exchange(state, std::move(from.back())));
  from.pop_back();
  typing_ = -1;
  return true;
}

}  // namespace orvello
