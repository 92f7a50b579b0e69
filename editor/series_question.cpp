#include "editor/series_question.h"

#include "resources/editor_templates.h"
#include "resources/ids.h"
#include "store/item_operations.h"

namespace orvello {
namespace {

class SeriesQuestion : public DialogProcedure {
 public:
  void handle(Dialog& dialog, const DialogEvent& event) override {
    if (event.kind != DialogEvent::Kind::command) return;
    dialog.close(event.control == kControlCancel ? 0 : event.control);
  }
};

bool can_be_split(const EditorContext& context, const EditorChoice& choice) {
  const auto item = context.session.ItemFromOid(choice.oid);
  return item && can_follow(*item, choice.occurrence);
}

}  // namespace

bool choose_scope(const EditorContext& context, EditorChoice& choice) {
  choice.scope = EditScope::series;
  if (!isApptRecurring(context.session, context.host.boxes, choice.oid)) return true;
  // A row that stands for many occurrences means none of them.
  if (choice.occurrence >= kNoDate) return true;
  SeriesQuestion question;
  const int answer = context.host.dialogs.run_modal(
      series_question_dialog(context.language(), can_be_split(context, choice)), question);
  if (answer == kChooseOccurrence) choice.scope = EditScope::occurrence;
  if (answer == kChooseFollowing) choice.scope = EditScope::following;
  return answer != 0;
}

}  // namespace orvello
