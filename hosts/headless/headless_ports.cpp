#include "hosts/headless/headless_ports.h"

namespace orvello {

bool HeadlessMenuBar::create(const MenuBarContent& content) {
  if (fail_creation) return false;
  content_ = content;
  disabled_.clear();
  checked_.clear();
  exists_ = true;
  ++creations;
  return true;
}

MenuBarButton* HeadlessMenuBar::button(std::uint32_t command) {
  for (MenuBarButton& button : content_.buttons)
    if (button.command == command) return &button;
  return nullptr;
}

void HeadlessMenuBar::set_button_text(int index, TextView text) {
  if (index >= 0 && index < static_cast<int>(content_.buttons.size()))
    content_.buttons[static_cast<std::size_t>(index)].text = text;
}

void HeadlessMenuBar::enable_button(std::uint32_t command, bool enabled) {
  if (enabled)
    disabled_.erase(command);
  else
    disabled_.insert(command);
}

void HeadlessMenuBar::check_button(std::uint32_t command, bool checked) {
  if (checked)
    checked_.insert(command);
  else
    checked_.erase(command);
}

void HeadlessMenuBar::set_menu(std::uint32_t command, const std::vector<MenuItem>& items) {
  if (MenuBarButton* found = button(command)) found->menu = items;
}

const std::vector<MenuItem>& HeadlessMenuBar::menu(std::uint32_t command) const {
  static const std::vector<MenuItem> kNone;
  for (const MenuBarButton& button : content_.buttons)
    if (button.command == command) return button.menu;
  return kNone;
}

BoxAnswer HeadlessBoxes::show(TextView text, TextView caption, BoxIcon icon, BoxButtons buttons,
                              bool owned) {
  shown.push_back({Text(text), Text(caption), icon, buttons, owned});
  if (!answers.empty()) {
    const BoxAnswer answer = answers.front();
    answers.erase(answers.begin());
    return answer;
  }
  return buttons == BoxButtons::yes_no ? BoxAnswer::yes : BoxAnswer::ok;
}

HeadlessDialog::HeadlessDialog(const DialogTemplate& dialog, DialogProcedure& procedure)
    : dialog(dialog), procedure_(procedure) {
  for (const ControlTemplate& control : dialog.controls)
    controls[control.id] = {control.kind, control.text, {}, -1, false, true, true};
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
  if (find(control)) controls[control].checked = checked;
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

void HeadlessClock::set(SystemTime now) {
  CalendarDate date = 0;
  SystemTimeToVariantTime(now, date);
  VariantTimeToSystemTime(date, now_);  // fills in the day of the week
}

UtcSeconds HeadlessClock::utc_now() const {
  CalendarDate date = 0;
  SystemTimeToVariantTime(now_, date);
  return zone_.to_utc(to_seconds(date));
}

bool HeadlessInput::load_library(TextView name) {
  if (missing.count(Text(name))) return false;
  loaded.insert(Text(name));
  return true;
}

}  // namespace orvello
