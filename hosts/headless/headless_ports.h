// The small ports without a screen: a menu bar, message boxes, dialogs, a clock, a locale and input
// methods that a test sets up and looks at.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "hosts/headless/headless_report.h"
#include "ports/clock.h"
#include "ports/dialog.h"
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

class HeadlessDialog : public Dialog {
 public:
  HeadlessDialog(const DialogTemplate& dialog, DialogProcedure& procedure);

  Text text(int control) const override;
  void set_text(int control, TextView text) override;
  bool checked(int control) const override;
  void set_checked(int control, bool checked) override;
  void enable(int control, bool enabled) override;
  void show(int control, bool shown) override;
  void focus(int control, Caret) override { focused = control; }
  void set_step(int shown_step) override { step = shown_step; }
  Rect place(int control) const override;
  void set_place(int control, const Rect& place) override;
  ChoiceControl* choice(int) override { return nullptr; }
  ListControl* list(int control) override;
  DateControl* date(int control) override;
  RangeControl* range(int) override { return nullptr; }
  NotesControl* notes(int) override { return nullptr; }
  ReportList* report(int control) override;
  DrawnControl* drawn(int control) override;
  void set_timer(int id, int milliseconds) override;
  void close(int result) override;

  // What a person does.
  void press(int control);
  void type(int control, TextView text);
  void tap_row(int control, int row);
  void choose_date(int control, const MonthDayYear& date);  // in a month calendar
  void pen_down(int control, Point point, bool second = false);
  void pen_move(int control, Point point);
  void pen_up(int control, Point point);
  void tap(int control, Point point);
  void key(int control, std::uint32_t key, bool control_held = false, bool shift_held = false);
  bool fire_timer(int id);  // false: not started
  void press_beside();      // of a popup
  HeadlessReport& rows(int control) { return *reports.at(control); }
  Size size_of(int control) const;  // of a custom control, at 96 dpi

  // What a person picks from a menu; without it nothing.
  std::function<std::uint32_t(const std::vector<MenuItem>&)> menu_choice;
  std::vector<MenuItem> menu;  // the last one opened

  struct Control {
    ControlTemplate::Kind kind;
    Text text;
    std::vector<Text> rows;
    int selected = -1;
    bool checked = false, enabled = true, shown = true;
    MonthDayYear date{};
    std::vector<AccessibleCell> parts{};
  };
  DialogTemplate dialog;
  std::map<int, Control> controls;
  std::map<int, std::unique_ptr<HeadlessReport>> reports;
  std::map<int, int> timers;
  int invalidations = 0;
  int focused = 0;
  int step = 0;
  bool closed = false;
  int result = 0;

 private:
  class List;
  class Date;
  class Drawn;
  std::map<int, std::shared_ptr<ListControl>> lists_;
  std::map<int, std::shared_ptr<DateControl>> dates_;
  std::map<int, std::shared_ptr<DrawnControl>> drawn_;
  const Control* find(int control) const;
  void choose_radio(int control);
  void send_pointer(DialogEvent::Kind kind, int control, Point point);
  DialogProcedure& procedure_;
};

class HeadlessDialogs : public Dialogs {
 public:
  int run_modal(const DialogTemplate& dialog, DialogProcedure& procedure) override;
  std::unique_ptr<Dialog> open_modeless(const DialogTemplate& dialog,
                                        DialogProcedure& procedure) override;
  int run_sheet(TextView, const std::vector<SheetPage>&) override { return kSheetFailed; }

  // Plays the person in front of modal dialogs; without one they are closed at once.
  std::function<void(HeadlessDialog&)> person;
  std::vector<int> opened;             // template ids, in order
  HeadlessDialog* modeless = nullptr;  // the last one opened, while it lives

 private:
  class Modeless;
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
  bool russian_resources() const override { return russian_; }

 private:
  LocaleData data_;
  bool russian_;
};

class HeadlessInput : public InputMethods {
 public:
  bool load_library(TextView name) override;
  void free_library(TextView name) override { loaded.erase(Text(name)); }
  PanelAnswer raise_input_panel(const Rect&) override { return PanelAnswer::raised; }
  void hide_input_panel() override { ++panel_hides; }
  std::set<Text> loaded, missing;
  int panel_hides = 0;
};

}  // namespace orvello
