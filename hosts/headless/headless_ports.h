// The small ports without a screen: a menu bar, message boxes, a clock, a locale and input methods
// that a test sets up and looks at.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "ports/clock.h"
#include "ports/input_methods.h"
#include "ports/locale.h"
#include "ports/menu_bar.h"
#include "ports/message_box.h"

namespace orvello {

class HeadlessMenuBar : public MenuBar {
 public:
  bool create(const MenuBarContent& content) override;
  void destroy() override { exists_ = false; }
  bool exists() const override { return exists_; }
  int height() const override { return exists_ ? content_.height : 0; }
  void set_button_text(int index, TextView text) override;
  void enable_button(std::uint32_t command, bool enabled) override;
  void check_button(std::uint32_t command, bool checked) override;
  void set_menu(std::uint32_t command, const std::vector<MenuItem>& items) override;

  const MenuBarContent& content() const { return content_; }
  const std::vector<MenuItem>& menu(std::uint32_t command) const;
  bool enabled(std::uint32_t command) const { return !disabled_.count(command); }
  bool checked(std::uint32_t command) const { return checked_.count(command) != 0; }
  int creations = 0;
  bool fail_creation = false;

 private:
  MenuBarButton* button(std::uint32_t command);
  MenuBarContent content_;
  std::set<std::uint32_t> disabled_, checked_;
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
  void beep(Beep beep) override { ++(beep == Beep::hand ? hands : beeps); }
  std::vector<ShownBox> shown;
  int beeps = 0, hands = 0;
  std::function<void()> meanwhile;  // while a box stands
  std::vector<BoxAnswer> answers;   // the next ones to give; then the first button's
};

class HeadlessClock : public Clock {
 public:
  explicit HeadlessClock(SystemTime now = {2026, 11, 6, 21, 10, 0, 0, 0}) { set(now); }
  void set(SystemTime now);
  void set_zone(Zone zone) { zone_ = std::move(zone); }

  SystemTime local_time() const override { return now_; }
  UtcSeconds utc_now() const override;
  std::string zone_name() const override { return zone_.name(); }
  LocalSeconds to_local(UtcSeconds utc) const override { return zone_.from_utc(utc); }
  UtcSeconds to_utc(LocalSeconds local) const override { return zone_.to_utc(local); }

 private:
  SystemTime now_;
  Zone zone_;
};

class HeadlessLocale : public Locale {
 public:
  explicit HeadlessLocale(LocaleData data = english_locale(), bool russian = false)
      : data_(std::move(data)), russian_(russian) {}
  LocaleData data() const override { return data_; }
  // Latin and Russian letters without their case, everything else by its number; what is equal so
  // by number too.
  int compare(TextView a, TextView b) const override;
  bool russian_resources() const override { return russian_; }

 private:
  LocaleData data_;
  bool russian_;
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
