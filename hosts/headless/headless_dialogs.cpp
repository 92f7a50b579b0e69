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

// The others of its group go out.
void HeadlessDialog::choose_radio(int control) {
  int group = 0;
  for (const ControlTemplate& one : dialog.controls)
    if (one.id == control) group = one.group;
  for (const ControlTemplate& one : dialog.controls)
    if (one.kind == ControlTemplate::Kind::radio_button && one.group == group)
      controls[one.id].checked = one.id == control;
}

void HeadlessDialog::enable(int control, bool enabled) {
  if (find(control)) controls[control].enabled = enabled;
}

void HeadlessDialog::show(int control, bool shown) {
  if (find(control)) controls[control].shown = shown;
}

ReportList* HeadlessDialog::report(int control) {
  const auto found = reports.find(control);
  return found == reports.end() ? nullptr : found->second.get();
}

class HeadlessDialog::List : public ListControl {
 public:
  explicit List(Control& control) : control_(control) {}
  void set_rows(const std::vector<Text>& rows) override {
    control_.rows = rows;
    control_.selected = -1;
  }
  std::vector<Text> rows() const override { return control_.rows; }
  std::vector<int> selected() const override {
    return control_.selected < 0 ? std::vector<int>() : std::vector<int>{control_.selected};
  }
  void select(const std::vector<int>& rows) override {
    control_.selected = rows.empty() ? -1 : rows.front();
  }
  void show_row(int) override {}

 private:
  Control& control_;
};

class HeadlessDialog::Date : public DateControl {
 public:
  explicit Date(Control& control) : control_(control) {}
  MonthDayYear date() const override { return control_.date; }
  void set_date(const MonthDayYear& date) override { control_.date = date; }
  void set_calendar(const MonthDayYear&, bool) override {}
  void set_picture(TextView) override {}

 private:
  Control& control_;
};

class HeadlessDialog::Drawn : public DrawnControl {
 public:
  Drawn(HeadlessDialog& dialog, Control& control) : dialog_(dialog), control_(control) {}
  void invalidate() override { ++dialog_.invalidations; }
  void set_image(const Image&) override {}
  void set_parts(const std::vector<AccessibleCell>& parts) override { control_.parts = parts; }
  std::uint32_t track_menu(const std::vector<MenuItem>& items, Point) override {
    dialog_.menu = items;
    const std::uint32_t choice = dialog_.menu_choice ? dialog_.menu_choice(items) : 0;
    for (const MenuItem& item : items)
      if (item.command == choice && item.enabled) return choice;
    return 0;
  }

 private:
  HeadlessDialog& dialog_;
  Control& control_;
};

ListControl* HeadlessDialog::list(int control) {
  const Control* found = find(control);
  if (!found || found->kind != ControlTemplate::Kind::list) return nullptr;
  auto& handle = lists_[control];
  if (!handle) handle = std::make_shared<List>(controls[control]);
  return handle.get();
}

DateControl* HeadlessDialog::date(int control) {
  const Control* found = find(control);
  if (!found || found->kind != ControlTemplate::Kind::month_calendar) return nullptr;
  auto& handle = dates_[control];
  if (!handle) handle = std::make_shared<Date>(controls[control]);
  return handle.get();
}

DrawnControl* HeadlessDialog::drawn(int control) {
  using Kind = ControlTemplate::Kind;
  const Control* found = find(control);
  if (!found || (found->kind != Kind::custom && found->kind != Kind::report)) return nullptr;
  auto& handle = drawn_[control];
  if (!handle) handle = std::make_shared<Drawn>(*this, controls[control]);
  return handle.get();
}

Rect HeadlessDialog::place(int control) const {
  for (const ControlTemplate& one : dialog.controls)
    if (one.id == control) return one.place;
  return {};
}

void HeadlessDialog::set_place(int control, const Rect& place) {
  for (ControlTemplate& one : dialog.controls)
    if (one.id == control) one.place = place;
}

void HeadlessDialog::set_timer(int id, int milliseconds) {
  if (milliseconds > 0)
    timers[id] = milliseconds;
  else
    timers.erase(id);
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
  if (!closed) procedure_.handle(*this, {DialogEvent::Kind::taken, control, nullptr, {}});
}

void HeadlessDialog::choose_date(int control, const MonthDayYear& date) {
  if (closed || !find(control)) return;
  controls[control].date = date;
  procedure_.handle(*this, {DialogEvent::Kind::changed, control, nullptr, {}});
  if (!closed) procedure_.handle(*this, {DialogEvent::Kind::taken, control, nullptr, {}});
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
  if (!shown.closed && procedure.may_close(shown)) {
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
