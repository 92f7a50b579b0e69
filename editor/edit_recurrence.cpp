#include "editor/edit_recurrence.h"

#include "editor/recurrence_procedure.h"
#include "resources/dialog_templates.h"

namespace orvello {

bool edit_recurrence(const EditorContext& context, RecurrencePattern& pattern, bool all_day,
                     std::string_view) {
  RecurrenceForm form = recurrence_form(pattern, all_day);
  RecurrenceProcedure procedure(context, form);
  if (context.host.dialogs.run_modal(recurrence_dialog(context.language()), procedure) != 1)
    return false;
  pattern = recurrence_pattern(form, pattern);
  return true;
}

}  // namespace orvello
