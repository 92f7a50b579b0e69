#include "app/appointment_operations.h"

#include <algorithm>

#include "app/day_popups.h"
#include "ports/messages.h"
#include "resources/dialog_templates.h"
#include "resources/ids.h"
#include "store/item_operations.h"
#include "store/wait_cursor.h"

namespace orvello {

OperationContext AppointmentOperations::operation() const {
  return {c_.session, c_.host.boxes, c_.host.window, c_.host.files, c_.history};
}

void AppointmentOperations::run(std::uint32_t command, const RowKey& key, const Spot& spot) {
  switch (command) {
    case kCommandCut:
      return take_source(true, key, spot.day);
    case kCommandCopy:
      return take_source(false, key, spot.day);
    case kCommandPaste:
      return paste(spot.day);
    case kCommandMoveTo:
      return ask_and_move(key, spot);
    case kCommandBeam:
      return beam(key);
    case kCommandDelete:
      return erase(key);
    case kCommandEditAppointment:
      if (key) open_editor(key, spot.day);
      return;
    case kCommandCreate:
      return open_editor({}, spot.day);
    default:
      return;
  }
}

void AppointmentOperations::open_editor(const RowKey& key, const MonthDayYear& day) {
  if (day != c_.state.current) c_.commands.set_current_date(day);
  c_.state.to_edit = {key.oid, key.start, EditScope::series};
  c_.commands.send_command(kCommandNew);
}

void AppointmentOperations::take_source(bool cut, const RowKey& key, const MonthDayYear& day) {
  if (!key) return;
  source_ = {cut ? 0 : key.oid, cut ? key.oid : 0, key.start, day};
}

void AppointmentOperations::paste(const MonthDayYear& day) {
  if (!source_.any()) return;
  if (source_.day == day) {
    c_.host.boxes.show(u"Cannot copy into same day", u"Error");
    return;
  }
  const bool move = source_.cut != 0;
  const bool done = [&] {
    const WaitCursor waiting(c_.host.window);
    return move ? move_appointment(operation(), source_.cut, source_.start, day_of(day))
                : copy_appointment(operation(), source_.copied, source_.start, day_of(day));
  }();
  // What could not be moved can be tried again.
  if (move && done) source_.cut = 0;
  c_.commands.appointments_changed(false);
}

void AppointmentOperations::move_to(const RowKey& key, Day day) {
  {
    const WaitCursor waiting(c_.host.window);
    move_appointment(operation(), key.oid, key.start, day);
  }
  c_.commands.appointments_changed(false);
}

bool AppointmentOperations::shift(const RowKey& key, CalendarDate start) {
  const bool done = [&] {
    const WaitCursor waiting(c_.host.window);
    return shift_appointment(operation(), key.oid, key.start, start);
  }();
  c_.commands.appointments_changed(false);
  return done;
}

std::optional<MonthDayYear> AppointmentOperations::ask_date(const MonthDayYear& shown, Point at) {
  DateProcedure procedure(shown, c_.state.today, c_.settings.firstdayofweek != 0);
  DialogTemplate dialog = date_dialog(c_.commands.language());
  const ScreenLayout& screen = c_.state.form_layout;
  const Size size{dialog.size.width * screen.dpi_x / 96, dialog.size.height * screen.dpi_y / 96};
  const int width = std::min(size.width, screen.work.width);
  const int y = std::clamp(at.y, 0, std::max(0, screen.work.height - size.height));
  dialog.place = {std::min(at.x, screen.work.width - width), y, width,
                  std::min(size.height, screen.work.height - y)};
  if (c_.host.dialogs.run_modal(dialog, procedure) != 1) return std::nullopt;
  return procedure.date();
}

// By a month to choose from, without going there.
void AppointmentOperations::ask_and_move(const RowKey& key, const Spot& spot) {
  const RowKey meant = key;  // the view may be made anew while this is asked
  const MonthDayYear from = spot.day;
  if (!meant) return;
  const auto target = ask_date(from, spot.at);
  if (target && *target != from) move_to(meant, day_of(*target));
}

// A row of many that stand for more than they are has no start, nor a day to go on from.
void AppointmentOperations::move_by(const RowKey& key, int days) {
  if (key && key.start != kNoDate && days != 0) move_to(key, whole_day(key.start) + days);
}

void AppointmentOperations::beam(const RowKey& key) {
  const auto item = c_.session.ItemFromOid(key.oid);
  if (!item || !c_.session.BeamToInfrared(*item))
    c_.host.boxes.show(with_reason(c_.session, u"Could not beam appointment"), u"Error");
}

// The answer of dialog 149.
int AppointmentOperations::ask_erase(const RowKey& key) {
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

void AppointmentOperations::erase(const RowKey& key) {
  const RowKey meant = key;  // the list may be made anew while this is asked
  if (!meant) return;
  const int answer = ask_erase(meant);
  bool reconnect = false;
  if (answer != DeleteProcedure::kCancel) {
    const WaitCursor waiting(c_.host.window);
    reconnect = delete_appointment(operation(), meant.oid, answer, meant.start);
  }
  c_.commands.appointments_changed(reconnect);
}

}  // namespace orvello
