// What a date is chosen in. The platform's controls are what is seen and tapped; the date is kept
// here, also one that a control of the platform would not take, and keys are alike on all versions.
#pragma once

#include "hosts/shared/date_keys.h"
#include "hosts/win32/form_control.h"

namespace orvello {

class DatedControl : public FormControl {
 public:
  DatedControl(ControlTemplate made, const FormLook& look, const ControlSink& sink)
      : FormControl(std::move(made), look, sink), handle_(*this) {}
  DateControl* date() final { return &handle_; }
  void set_name(const Text& name) override;

 protected:
  virtual void date_is_set() = 0;
  virtual void calendar_is_set() = 0;
  virtual void picture_is_set() {}
  bool create_dated(HWND parent, const wchar_t* window_class, DWORD style,
                    DWORD extended_style = 0);
  // Where a key of this moment leads; nothing: nowhere, or to the same date.
  std::optional<MonthDayYear> after_key(UINT key) const;
  static bool moves_date(UINT key) { return key >= VK_PRIOR && key <= VK_DOWN; }

  MonthDayYear date_{1, 1, 2000}, today_{};
  bool monday_first_ = false;
  Text picture_;

 private:
  struct Handle final : DateControl {
    explicit Handle(DatedControl& of) : control(of) {}
    MonthDayYear date() const override { return control.date_; }
    void set_date(const MonthDayYear& date) override;
    void set_calendar(const MonthDayYear& today, bool monday_first) override;
    void set_picture(TextView picture) override;
    DatedControl& control;
  };
  Handle handle_;
};

// A month, in letters as large as its place allows.
class CalendarControl : public DatedControl {
 public:
  using DatedControl::DatedControl;
  bool create(HWND parent) override;
  void put(const Rect& place) override;
  void look_changed() override;
  bool uses_key(UINT key) const override;
  std::optional<LRESULT> reflected(UINT message, WPARAM wparam, LPARAM lparam) override;

 protected:
  void date_is_set() override;
  void calendar_is_set() override;
  LRESULT control_message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  bool move_to(const MonthDayYear& date);  // false: it is there
  void fit_letters(Size room);
  void write_letters(int height);

  Rect place_;
  int letters_ = 0;  // their height; 0: not written yet
  Size needed_;      // with them
  bool setting_ = false;
};

// A field with a date in the program's own words, which drops the platform's calendar down.
class DatePickerControl : public DatedControl {
 public:
  using DatedControl::DatedControl;
  bool create(HWND parent) override;
  void look_changed() override;
  bool uses_key(UINT key) const override;
  bool is_dropped_down() const override;
  void close_drop() override;
  std::optional<LRESULT> reflected(UINT message, WPARAM wparam, LPARAM lparam) override;

 protected:
  void date_is_set() override;
  void calendar_is_set() override;
  void picture_is_set() override;
  LRESULT control_message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  HWND calendar() const;  // the one that is down; null: none
  void drop();
  void dropped();
  void closed();
  bool press_key(UINT key);
  void show_date(const MonthDayYear& date);
  Text shown() const;
  void paint();

  bool tapped_ = false;  // a day of the calendar that is down
  bool setting_ = false;
};

}  // namespace orvello
