// Importing from the window: what the files hold is shown with counts first, and comes in on OK.
#pragma once

#include <string>
#include <vector>

#include "exchange/import.h"
#include "ports/dialog.h"
#include "ports/message_box.h"
#include "resources/strings.h"
#include "store/edit_history.h"

namespace orvello {

// The procedure of dialog 300: result 1 on OK.
class ImportProcedure : public DialogProcedure {
 public:
  ImportProcedure(ImportResult preview, Language language)
      : preview_(std::move(preview)), language_(language) {}
  void handle(Dialog& dialog, const DialogEvent& event) override;

 private:
  ImportResult preview_;
  Language language_;
};

// True when appointments came in, which is then a step of the history.
bool import_after_preview(const std::vector<std::string>& files, RecordStore& store,
                          EditHistory& history, const Clock& clock, Dialogs& dialogs,
                          MessageBoxes& boxes, Language language);

}  // namespace orvello
