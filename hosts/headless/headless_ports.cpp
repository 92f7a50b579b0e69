#include "hosts/headless/headless_ports.h"

#include <algorithm>

#include "calendar/posix_zone.h"
#include "ports/messages.h"

namespace orvello {
namespace {

// A letter without its case, for those of the two languages.
char16_t folded(char16_t unit) {
  if ((unit >= u'A' && unit <= u'Z') || (unit >= u'А' && unit <= u'Я'))
    return static_cast<char16_t>(unit + 32);
  return unit == u'Ё' || unit == u'ё' ? u'е' : unit;
}

}  // namespace

int HeadlessLocale::compare(TextView a, TextView b) const {
  const bool less = std::lexicographical_compare(
      a.begin(), a.end(), b.begin(), b.end(),
      [](char16_t one, char16_t other) { return folded(one) < folded(other); });
  if (less) return -1;
  const bool same = a.size() == b.size() &&
                    std::equal(a.begin(), a.end(), b.begin(), [](char16_t one, char16_t other) {
                      return folded(one) == folded(other);
                    });
  return same ? a.compare(b) : 1;
}

bool HeadlessMenuBar::create(const MenuBarContent& content) {
  if (fail_creation || exists_) return false;
  content_ = content;
  disabled_.clear();
  checked_.clear();
  highlights_.clear();
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

void HeadlessMenuBar::highlight_button(std::uint32_t command, bool highlighted, TextView hint) {
  if (!button(command)) return;
  if (highlighted)
    highlights_[command] = hint;
  else
    highlights_.erase(command);
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

void HeadlessMenuBar::tap(std::uint32_t command) {
  const MenuBarButton* found = exists_ ? button(command) : nullptr;
  if (found && enabled(command)) window_.post({kMessageCommand, command, {}, 0});
}

void HeadlessMenuBar::choose(std::uint32_t menu_command, std::uint32_t item) {
  if (!exists_ || !enabled(menu_command)) return;
  for (const MenuItem& one : menu(menu_command))
    if (one.command == item && one.enabled) window_.post({kMessageCommand, item, {}, 0});
}

namespace {

// By button.
std::vector<BoxAnswer> answers_of(BoxButtons buttons) {
  switch (buttons) {
    case BoxButtons::ok:
      break;
    case BoxButtons::ok_cancel:
    case BoxButtons::ok_cancel_losing:
      return {BoxAnswer::ok, BoxAnswer::cancel};
    case BoxButtons::yes_no:
    case BoxButtons::yes_no_losing:
      return {BoxAnswer::yes, BoxAnswer::no};
    case BoxButtons::yes_no_cancel:
      return {BoxAnswer::yes, BoxAnswer::no, BoxAnswer::cancel};
  }
  return {BoxAnswer::ok};
}

}  // namespace

bool HeadlessShell::start_this_program(bool wanted) {
  if (unreadable || unwritable) return false;
  if (wanted && starts != kThisProgram) before_ = std::exchange(starts, kThisProgram);
  if (!wanted && starts == kThisProgram) starts = before_;
  return true;
}

BoxAnswer HeadlessBoxes::show(TextView text, TextView caption, BoxIcon icon, BoxButtons buttons,
                              bool owned) {
  shown.push_back({Text(text), Text(caption), icon, buttons, owned});
  if (const auto happens = meanwhile) happens();
  if (!answers.empty()) {
    const BoxAnswer answer = answers.front();
    answers.erase(answers.begin());
    return answer;
  }
  const std::vector<BoxAnswer> all = answers_of(buttons);
  // The last one is the careful one.
  const bool loses =
      buttons == BoxButtons::ok_cancel_losing || buttons == BoxButtons::yes_no_losing;
  if (button == kReturn) return loses ? all.back() : all.front();
  return button < 0 ? all.back() : all.at(static_cast<std::size_t>(button));
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

std::optional<Zone> HeadlessClock::known_zone(std::string_view name) const {
  const auto rule = zone_rules.find(name);
  if (rule == zone_rules.end()) return std::nullopt;
  const UtcSeconds from = utc_at_offset(midnight_of(day_of(1970, 1, 1)), 0);
  return Zone(std::string(name), parse_posix_zone(rule->second)->observances_after(from));
}

bool HeadlessInput::load_library(TextView name) {
  if (missing.count(Text(name))) return false;
  loaded.insert(Text(name));
  return true;
}

PanelAnswer HeadlessInput::raise_input_panel(const Rect& beside) {
  const bool room = panel_height == 0 || beside.bottom() <= screen_height - panel_height;
  move_panel(room && panel_height > 0);
  return room ? PanelAnswer::raised : PanelAnswer::no_room;
}

void HeadlessInput::hide_input_panel() {
  ++panel_hides;
  move_panel(false);
}

void HeadlessInput::move_panel(bool up) {
  if (up == panel_up) return;
  panel_up = up;
  if (panel_changed) panel_changed(up ? panel_height : 0);
}

}  // namespace orvello
