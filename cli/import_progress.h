// A form over an import that takes its time: how far it is, and a way to stop it.
#pragma once

#include "cli/import_desk.h"
#include "exchange/import_run.h"

namespace orvello {

// The procedure of dialog 360: result 1 when the run has ended, 0 when the person stopped it.
class ProgressProcedure : public DialogProcedure {
 public:
  ProgressProcedure(ImportRun& run, const ImportDesk& desk) : run_(run), desk_(desk) {}
  void handle(Dialog& dialog, const DialogEvent& event) override;

 private:
  void show(Dialog& dialog);
  void paint(Canvas& canvas, Size size) const;

  ImportRun& run_;
  const ImportDesk& desk_;
  ImportProgress progress_;
};

// Goes through the run while the window lives, with the form if it is a long one. False: the person
// stopped it.
bool run_with_progress(ImportRun& run, const ImportDesk& desk, StringId title);

}  // namespace orvello
