// The commands of the Day view's menu.

#include "app/day_popups.h"
#include "app/day_view.h"
#include "ports/messages.h"
#include "resources/dialog_templates.h"
#include "resources/ids.h"
#include "store/item_operations.h"
#include "store/wait_cursor.h"

namespace orvello {

OperationContext DayView::operation() const {
  return {c_.session, c_.host.boxes, c_.host.window, c_.host.files, c_.history};
}

void DayView::run_command(std::uint32_t command, const RowKey& key) {
  switch (command) {
    case kCommandCut:
      return take_source(true, key);
    case kCommandCopy:
      return take_source(false, key);
    case kCommandPaste:
      return paste();
    case kCommandMoveTo:
      return move_row(key);
    case kCommandBeam:
      return beam(key);
    case kCommandDelete:
      return delete_row(key);
    case kCommandEditAppointment:
      if (key) open_editor(key);
      return;
    case kCommandCreate:
      return open_editor({});
    default:
      return;
  }
}

void DayView::open_editor(const RowKey& key) {
  c_.state.to_edit = {key.oid, key.start, EditScope::series};
  c_.commands.send_command(kCommandNew);
}

void DayView::take_source(bool cut, const RowKey& key) {
  if (!key) return;
  c_.source = {cut ? 0 : key.oid, cut ? key.oid : 0, key.start, c_.state.current};
}

void DayView::paste() {
  PasteSource& source = c_.source;
  if (!source.any()) return;
  if (source.day == c_.state.current) {
    c_.host.boxes.show(u"Cannot copy into same day", u"Error");
    return;
  }
  const bool move = source.cut != 0;
  const bool done = [&] {
    const WaitCursor waiting(c_.host.window);
    return move ? move_appointment(operation(), source.cut, source.start, shown_day())
                : copy_appointment(operation(), source.copied, source.start, shown_day());
  }();
  // What could not be moved can be tried again.
  if (move && done) source.cut = 0;
  c_.commands.appointments_changed(false);
}

// By a month to choose from, without going there.
void DayView::move_row(const RowKey& key) {
  const RowKey meant = key;  // the list may be made anew while this is asked
  if (!meant) return;
  const auto target = ask_date();
  focus_list();
  if (!target || day_of(*target) == shown_day()) return;
  {
    const WaitCursor waiting(c_.host.window);
    move_appointment(operation(), meant.oid, meant.start, day_of(*target));
  }
  c_.commands.appointments_changed(false);
}

void DayView::beam(const RowKey& key) {
  const auto item = c_.session.ItemFromOid(key.oid);
  if (!item || !c_.session.BeamToInfrared(*item))
    c_.host.boxes.show(with_reason(c_.session, u"Could not beam appointment"), u"Error");
}

// The answer of dialog 149.
int DayView::ask_delete(const RowKey& key) {
  const auto item = c_.session.ItemFromOid(key.oid);
  AppointmentFields fields;
  if (!item || !item->read(fields)) {
    // Nothing is deleted that could not be shown and asked about; one that is gone is named below.
    const bool failed = !c_.session.problem().empty();
    c_.host.boxes.show(with_reason(c_.session, u"Error in getting appointment info"), u"Error");
    return failed ? DeleteProcedure::kCancel : DeleteProcedure::kUnreadable;
  }
  const DialogTemplate dialog = delete_dialog(
      c_.commands.language(), !item->is_recurring()          ? DeleteChoices::none
                              : can_follow(*item, key.start) ? DeleteChoices::with_following
                                                             : DeleteChoices::two);
  const Rect& drawn = dialog.controls[0].place;
  const ScreenLayout& screen = c_.state.form_layout;
  DeleteProcedure procedure(
      fields.subject, {0, 0, drawn.width * screen.dpi_x / 96, drawn.height * screen.dpi_y / 96},
      screen, c_.host.dialogs);
  const int answer = c_.host.dialogs.run_modal(dialog, procedure);
  return answer == 0 ? DeleteProcedure::kCancel : answer;
}

void DayView::delete_row(const RowKey& key) {
  const RowKey meant = key;  // the list may be made anew while this is asked
  if (!meant) return;
  const int answer = ask_delete(meant);
  focus_list();
  bool reconnect = false;
  if (answer != DeleteProcedure::kCancel) {
    const WaitCursor waiting(c_.host.window);
    reconnect = delete_appointment(operation(), meant.oid, answer, meant.start);
  }
  c_.commands.appointments_changed(reconnect);
}

}  // namespace orvello
