#include "editor/editor_forms.h"

#include "calendar/dates.h"
#include "editor/appointment_procedure.h"
#include "editor/occurs_rules.h"
#include "editor/series_question.h"
#include "resources/editor_templates.h"
#include "settings/pretexts.h"
#include "store/save_appointment.h"

namespace orvello {
namespace {

// The menu bar is grey while the editor stands.
class GreyMenuBar {
 public:
  explicit GreyMenuBar(MenuBar& bar) : bar_(bar) { enable(false); }
  ~GreyMenuBar() { enable(true); }
  GreyMenuBar(const GreyMenuBar&) = delete;
  GreyMenuBar& operator=(const GreyMenuBar&) = delete;

 private:
  void enable(bool enabled) {
    for (const std::uint32_t command : {kCommandNew, kCommandOptions, kCommandExit, kCommandDayView,
                                        kCommandMonthView, kCommandYearView, kCommandProfileMenu})
      bar_.enable_button(command, enabled);
  }
  MenuBar& bar_;
};

EditorPretexts pretexts(const SettingsVolume& volume) {
  ChoiceList subjects, locations;
  // What could not be read has been shown; the rest can be offered.
  (void)loadPreTextToCB(volume, subjects, kSubjectPretexts);
  (void)loadPreTextToCB(volume, locations, kLocationPretexts);
  return {std::move(subjects.items), std::move(locations.items)};
}

}  // namespace

void EditorForms::edit(const EditorChoice& wanted) {
  EditorDraft draft;
  draft.opened.choice = wanted;
  bool readable = true;
  if (wanted.oid == 0) {
    draft.opened = new_appointment(context_.settings);
  } else {
    if (!choose_scope(context_, draft.opened.choice)) return;
    readable = read_appointment(context_.operation(), draft.opened) == FormRead::read;
    if (!readable)
      draft.opened.start_date = draft.opened.end_date = calendar_date_of(context_.settings.shown);
    if (!draft.opened.recurring) draft.opened.pattern = fresh_pattern(draft.opened.start_date);
  }
  draft.form = draft.opened;
  run(std::move(draft), readable, false);
}

// What was kept of it is forgotten once the editor ends, however that is.
void EditorForms::run(EditorDraft draft, bool readable, bool kept) {
  const GreyMenuBar grey(context_.host.menu_bar);
  const EditorPretexts offered = pretexts(context_.volume);
  if (draft.form.choice.oid == 0 && draft.form == draft.opened)
    draft.opened.location = draft.form.location =
        offered_location(offered.locations, context_.settings.strprevlocation);
  const DialogTemplate dialog = editor_dialog(context_.language(), context_.screen.low_resolution);
  for (;;) {
    AppointmentProcedure procedure(context_, offered, draft, readable);
    const int result = context_.host.dialogs.run_modal(dialog, procedure);
    context_.host.input.hide_input_panel();
    kept = kept || procedure.kept_draft();
    if (result != AppointmentProcedure::kGone) break;
    draft.form = as_new(draft.form);
    draft.opened = new_appointment(context_.settings);
  }
  if (kept) (void)forget_draft(context_.volume);
}

// Left without an answer, it is offered again by the next start.
bool EditorForms::offer_draft() {
  std::optional<EditorDraft> draft = kept_draft(context_.volume);
  if (!draft) return false;
  const Text& subject = draft->form.subject;
  const Text named = cut(shown_subject(subject), 80);
  const BoxAnswer answer =
      context_.host.boxes.show(format(load_string(StringId::box_draft, context_.language()), named),
                               u"Appointment", BoxIcon::none, BoxButtons::yes_no_cancel);
  if (answer == BoxAnswer::yes)
    run(std::move(*draft), true, true);
  else if (answer == BoxAnswer::no)
    (void)forget_draft(context_.volume);
  return true;
}

}  // namespace orvello
