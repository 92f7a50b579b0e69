// The small ports without a screen: a menu bar, message boxes, a clock, a locale and input methods
// that a test sets up and looks at.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "ports/clock.h"
#include "ports/device_shell.h"
#include "ports/input_methods.h"
#include "ports/locale.h"
#include "ports/main_window.h"
#include "ports/menu_bar.h"
#include "ports/message_box.h"

namespace orvello {

class HeadlessMenuBar : public MenuBar {
 public:
  explicit HeadlessMenuBar(MainWindow& window) : window_(window) {}
  bool create(const MenuBarContent& content) override;
  void destroy() override { exists_ = false; }
  bool exists() const override { return exists_; }
  int height() const override { return exists_ ? content_.height : 0; }
  void set_button_text(int index, TextView text) override;
  void enable_button(std::uint32_t command, bool enabled) override;
  void check_button(std::uint32_t command, bool checked) override;
  void highlight_button(std::uint32_t command, bool highlighted, TextView hint) override;
  void set_menu(std::uint32_t command, const std::vector<MenuItem>& items) override;

  // What a person does.
  void tap(std::uint32_t command);
  void choose(std::uint32_t menu, std::uint32_t item);

  const MenuBarContent& content() const { return content_; }
  const std::vector<MenuItem>& menu(std::uint32_t command) const;
  bool enabled(std::uint32_t command) const { return !disabled_.count(command); }
  bool checked(std::uint32_t command) const { return checked_.count(command) != 0; }
  // The hint of a highlighted button; empty: it is not.
  Text highlight(std::uint32_t command) const {
    const auto found = highlights_.find(command);
    return found == highlights_.end() ? Text() : found->second;
  }
  int creations = 0;
  bool fail_creation = false;

 private:
  MenuBarButton* button(std::uint32_t command);
  MainWindow& window_;
  MenuBarContent content_;
  std::set<std::uint32_t> disabled_, checked_;
  std::map<std::uint32_t, Text> highlights_;
  bool exists_ = false;
};

struct ShownBox {
  Text text, caption;
  BoxIcon icon = BoxIcon::none;
  BoxButtons buttons = BoxButtons::ok;
  bool owned = false;
};

class HeadlessBoxes : public MessageBoxes {
 public:
  BoxAnswer show(TextView text, TextView caption, BoxIcon icon, BoxButtons buttons,
                 bool owned) override;
  Text language() const override { return spoken; }
  void beep(Beep beep) override { ++(beep == Beep::hand ? hands : beeps); }
  static constexpr int kReturn = -2;
  Text spoken = u"en";
  std::vector<ShownBox> shown;
  int beeps = 0, hands = 0;
  std::function<void()> meanwhile;  // while a box stands
  std::vector<BoxAnswer> answers;   // the next ones to give; then that of the
  int button = 0;                   // button that is pressed, from 0; -1: left without one; kReturn
};

class HeadlessShell : public DeviceShell {
 public:
  std::optional<bool> starts_this_program() const override {
    return unreadable ? std::nullopt : std::optional(starts == kThisProgram);
  }
  bool start_this_program(bool wanted) override;

  static constexpr const char* kThisProgram = "orvello";
  std::string starts = "device";  // anybody may choose another
  bool unreadable = false, unwritable = false;

 private:
  std::string before_;
};

class HeadlessClock : public Clock {
 public:
  explicit HeadlessClock(SystemTime now = {2026, 11, 6, 21, 10, 0, 0, 0}) { set(now); }
  void set(SystemTime now);
  void set_zone(Zone zone) { zone_ = std::move(zone); }
  void set_zone(std::string_view name) { zone_ = known_zone(name).value(); }
  // Its time-zone database: the clock changes since 1970 as POSIX writes them, by name.
  std::map<std::string, const char*, std::less<>> zone_rules{
      {"Europe/Berlin", "CET-1CEST,M3.5.0,M10.5.0/3"},
      {"America/New_York", "EST5EDT,M3.2.0,M11.1.0"}};

  SystemTime local_time() const override { return now_; }
  UtcSeconds utc_now() const override;
  std::string zone_name() const override { return zone_.name(); }
  LocalSeconds to_local(UtcSeconds utc) const override { return zone_.from_utc(utc); }
  UtcSeconds to_utc(LocalSeconds local) const override { return zone_.to_utc(local); }
  std::optional<Zone> known_zone(std::string_view name) const override;

 private:
  SystemTime now_;
  Zone zone_;
};

class HeadlessLocale : public Locale {
 public:
  explicit HeadlessLocale(LocaleData data = english_locale(), TextView language = u"en")
      : data_(std::move(data)), language_(language) {}
  LocaleData data() const override { return data_; }
  // Latin and Russian letters without their case, everything else by its number; what is equal so
  // by number too.
  int compare(TextView a, TextView b) const override;
  Text language() const override { return language_; }

 private:
  LocaleData data_;
  Text language_;
};

class HeadlessInput : public InputMethods {
 public:
  bool load_library(TextView name) override;
  void free_library(TextView name) override { loaded.erase(Text(name)); }
  PanelAnswer raise_input_panel(const Rect& beside) override;
  void hide_input_panel() override;

  std::set<Text> loaded, missing;
  int panel_height = 0;  // at the lower edge of a screen of this height; 0: there is none
  int screen_height = 320;
  bool panel_up = false;
  std::function<void(int height)> panel_changed;  // how much of the screen it takes now
  int panel_hides = 0;

 private:
  void move_panel(bool up);
};

}  // namespace orvello
