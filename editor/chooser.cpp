#include "editor/chooser.h"

#include "editor/chooser_procedure.h"
#include "resources/dialog_templates.h"
#include "store/contact_list.h"
#include "store/wait_cursor.h"

namespace orvello {
namespace {

// The rows as the person left them; nothing: as they were.
std::optional<std::vector<ChooserRow>> run_chooser(const EditorContext& context,
                                                   std::vector<ChooserRow> rows,
                                                   LabelList* labels) {
  ChooserProcedure procedure(context, std::move(rows), labels);
  const DialogTemplate dialog = chooser_dialog(context.language(), labels == nullptr);
  if (context.host.dialogs.run_modal(dialog, procedure) != 1) return std::nullopt;
  return procedure.rows();
}

// None, and the person is told, when they cannot be read.
std::vector<StoreContact> readable_contacts(const EditorContext& context) {
  const WaitCursor reading(context.host.window);
  const auto folder = context.session.folder(kFolderContacts);
  auto contacts = folder ? sorted_contacts(*folder, context.host.locale) : std::nullopt;
  if (contacts) return std::move(*contacts);
  context.host.boxes.show(u"Could not open Contacts Folder!", u"Error", BoxIcon::warning);
  return {};
}

}  // namespace

bool choose_categories(const EditorContext& context, Text& categories) {
  LabelList labels(context, categories);
  const auto rows = run_chooser(context, labels.read(), &labels);
  if (rows) categories = chosen_categories(*rows);
  return rows.has_value();
}

bool choose_attendees(const EditorContext& context, std::vector<StoreRecipient>& attendees) {
  const auto rows =
      run_chooser(context, attendee_rows(readable_contacts(context), attendees), nullptr);
  if (rows) attendees = chosen_attendees(*rows);
  return rows.has_value();
}

}  // namespace orvello
