#include "hosts/headless/headless_ports.h"

namespace orvello {

HeadlessDialog::HeadlessDialog(const DialogTemplate& dialog, DialogProcedure& procedure)
    : dialog(dialog), procedure_(procedure) {
  for (const ControlTemplate& control : dialog.controls)
    controls[control.id] = {control.kind, control.text, {}, -1, false, true, true, {}, {}};
  for (const ControlTemplate& control : dialog.controls)
    if (control.kind == ControlTemplate::Kind::report)
      reports[control.id] = std::make_unique<HeadlessReport>(control.place);
}

const HeadlessDialog::Control* HeadlessDialog::find(int control) const {
  const auto found = controls.find(control);
  return found == controls.end() ? nullptr : &found->second;
}

Text HeadlessDialog::text(int control) const {
  const Control* found = find(control);
  return found ? found->text : Text();
}

void HeadlessDialog::set_text(int control, TextView text) {
  if (find(control)) controls[control].text = text;
}

bool HeadlessDialog::checked(int control) const {
  const Control* found = find(control);
  return found && found->checked;
}

void HeadlessDialog::set_checked(int control, bool checked) {
  const Control* found = find(control);
  if (!found) return;
  if (found->kind == ControlTemplate::Kind::radio_button && checked) return choose_radio(control);
  controls[control].checked = checked;
}

// The others of its row of radio buttons go out.
void HeadlessDialog::choose_radio(int control) {
  std::vector<int> group;
  bool here = false;
  for (const ControlTemplate& one : dialog.controls) {
    if (one.kind != ControlTemplate::Kind::radio_button) {
      if (here) break;
      group.clear();
      continue;
    }
    group.push_back(one.id);
    here = here || one.id == control;
  }
  for (const int id : group) controls[id].checked = id == control;
}

void HeadlessDialog::enable(int control, bool enabled) {
  if (find(control)) controls[control].enabled = enabled;
}

void HeadlessDialog::show(int control, bool shown) {
  if (find(control)) controls[control].shown = shown;
}

void HeadlessDialog::set_rows(int control, const std::vector<Text>& rows) {
  if (!find(control)) return;
  controls[control].rows = rows;
  controls[control].selected = -1;
}

ReportList* HeadlessDialog::report(int control) {
  const auto found = reports.find(control);
  return found == reports.end() ? nullptr : found->second.get();
}

void HeadlessDialog::set_calendar(int control, const MonthDayYear& date, const MonthDayYear&,
                                  bool) {
  if (find(control)) controls[control].date = date;
}

MonthDayYear HeadlessDialog::calendar_date(int control) const {
  const Control* found = find(control);
  return found ? found->date : MonthDayYear();
}

void HeadlessDialog::set_parts(int control, const std::vector<AccessibleCell>& parts) {
  if (find(control)) controls[control].parts = parts;
}

std::uint32_t HeadlessDialog::track_menu(const std::vector<MenuItem>& items, int, Point) {
  menu = items;
  const std::uint32_t choice = menu_choice ? menu_choice(items) : 0;
  for (const MenuItem& item : items)
    if (item.command == choice && item.enabled) return choice;
  return 0;
}

int HeadlessDialog::selected_row(int control) const {
  const Control* found = find(control);
  return found ? found->selected : -1;
}

void HeadlessDialog::select_row(int control, int row) {
  if (find(control)) controls[control].selected = row;
}

void HeadlessDialog::close(int with_result) {
  if (closed) return;
  closed = true;
  result = with_result;
}

void HeadlessDialog::press(int control) {
  const Control* found = find(control);
  if (closed || !found || !found->enabled || !found->shown) return;
  if (found->kind == ControlTemplate::Kind::check_box) controls[control].checked = !found->checked;
  if (found->kind == ControlTemplate::Kind::radio_button) choose_radio(control);
  procedure_.handle(*this, {DialogEvent::Kind::command, control, nullptr, {}});
}

void HeadlessDialog::type(int control, TextView text) {
  const Control* found = find(control);
  if (closed || !found || !found->enabled || !found->shown) return;
  controls[control].text = text;
  procedure_.handle(*this, {DialogEvent::Kind::changed, control, nullptr, {}});
}

void HeadlessDialog::tap_row(int control, int row) {
  const Control* found = find(control);
  if (closed || !found || row < 0 || row >= static_cast<int>(found->rows.size())) return;
  controls[control].selected = row;
  procedure_.handle(*this, {DialogEvent::Kind::changed, control, nullptr, {}});
}

void HeadlessDialog::choose_date(int control, const MonthDayYear& date) {
  if (closed || !find(control)) return;
  controls[control].date = date;
  procedure_.handle(*this, {DialogEvent::Kind::changed, control, nullptr, {}});
  if (!closed) procedure_.handle(*this, {DialogEvent::Kind::command, control, nullptr, {}});
}

Size HeadlessDialog::size_of(int control) const {
  for (const ControlTemplate& one : dialog.controls)
    if (one.id == control) return {one.place.width, one.place.height};
  return {};
}

void HeadlessDialog::send_pointer(DialogEvent::Kind kind, int control, Point point) {
  if (closed || !find(control)) return;
  DialogEvent event{kind, control, nullptr, size_of(control)};
  event.point = point;
  procedure_.handle(*this, event);
}

void HeadlessDialog::pen_down(int control, Point point, bool second) {
  using Kind = DialogEvent::Kind;
  send_pointer(second ? Kind::double_tap : Kind::pointer_down, control, point);
}

void HeadlessDialog::pen_move(int control, Point point) {
  send_pointer(DialogEvent::Kind::pointer_move, control, point);
}

void HeadlessDialog::pen_up(int control, Point point) {
  send_pointer(DialogEvent::Kind::pointer_up, control, point);
}

void HeadlessDialog::tap(int control, Point point) {
  pen_down(control, point);
  pen_up(control, point);
}

void HeadlessDialog::key(int control, std::uint32_t key, bool control_held, bool shift_held) {
  if (closed || !find(control)) return;
  DialogEvent event{DialogEvent::Kind::key, control, nullptr, size_of(control)};
  event.key = key;
  event.control_held = control_held;
  event.shift_held = shift_held;
  procedure_.handle(*this, event);
}

bool HeadlessDialog::fire_timer(int id) {
  if (closed || !timers.count(id)) return false;
  procedure_.handle(*this, {DialogEvent::Kind::timer, id, nullptr, {}});
  return true;
}

void HeadlessDialog::press_beside() {
  if (!closed && dialog.popup)
    procedure_.handle(*this, {DialogEvent::Kind::focus_lost, 0, nullptr, {}});
}

int HeadlessDialogs::run_modal(const DialogTemplate& dialog, DialogProcedure& procedure) {
  opened.push_back(dialog.id);
  HeadlessDialog shown(dialog, procedure);
  procedure.handle(shown, {DialogEvent::Kind::init, 0, nullptr, {}});
  if (!shown.closed && person) person(shown);
  if (!shown.closed) {
    procedure.handle(shown, {DialogEvent::Kind::close, 0, nullptr, {}});
    shown.close(0);
  }
  return shown.result;
}

class HeadlessDialogs::Modeless : public HeadlessDialog {
 public:
  Modeless(HeadlessDialogs& owner, const DialogTemplate& dialog, DialogProcedure& procedure)
      : HeadlessDialog(dialog, procedure), owner_(owner) {}
  ~Modeless() override {
    if (owner_.modeless == this) owner_.modeless = nullptr;
  }

 private:
  HeadlessDialogs& owner_;
};

std::unique_ptr<Dialog> HeadlessDialogs::open_modeless(const DialogTemplate& dialog,
                                                       DialogProcedure& procedure) {
  opened.push_back(dialog.id);
  auto shown = std::make_unique<Modeless>(*this, dialog, procedure);
  modeless = shown.get();
  procedure.handle(*shown, {DialogEvent::Kind::init, 0, nullptr, {}});
  return shown;
}

}  // namespace orvello
