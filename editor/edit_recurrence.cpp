#include "editor/edit_recurrence.h"

#include "editor/recurrence_procedure.h"
#include "editor/rule_words.h"
#include "resources/dialog_templates.h"

namespace orvello {

namespace {

bool may_replace(const EditorContext& context, std::string_view rules) {
  const Text words = rule_words(rules, context.language());
  return context.host.boxes.show(
             format(load_string(StringId::recurrence_rule_question, context.language()), words),
             u"Appointment - Recurring", BoxIcon::warning,
             BoxButtons::yes_no_losing) == BoxAnswer::yes;
}

}  // namespace

bool edit_recurrence(const EditorContext& context, RecurrencePattern& pattern, bool all_day,
                     std::string_view rules) {
  if (!rules.empty() && !may_replace(context, rules)) return false;
  RecurrenceForm form = recurrence_form(pattern, all_day);
  RecurrenceProcedure procedure(context, form);
  if (context.host.dialogs.run_modal(recurrence_dialog(context.language()), procedure) != 1)
    return false;
  pattern = recurrence_pattern(form, pattern);
  return true;
}

}  // namespace orvello
