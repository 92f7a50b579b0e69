// The editor over the program's ports: its form, its question about series, its companions.
#pragma once

#include "editor/appointment_editor.h"
#include "editor/drafts.h"
#include "editor/editor_context.h"

namespace orvello {

class EditorForms : public AppointmentEditor {
 public:
  explicit EditorForms(const EditorContext& context) : context_(context) {}
  void edit(const EditorChoice& choice) override;

  // Offers what was typed when an earlier run died; true when there was something to offer.
  bool offer_draft();

 private:
  // `kept`: as an earlier run left it.
  void run(EditorDraft draft, bool readable, bool kept);

  EditorContext context_;
};

}  // namespace orvello
