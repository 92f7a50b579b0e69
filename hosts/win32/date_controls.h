// What a date is chosen in, drawn here: the platform's own controls are too small for a finger and
// speak the system's language. Keys are alike on all systems.
#pragma once

#include <memory>

#include "hosts/shared/date_keys.h"
#include "hosts/win32/calendar_face.h"
#include "hosts/win32/form_control.h"
#include "hosts/win32/wheel_turns.h"

namespace orvello {

class DatedControl : public FormControl {
 public:
  DatedControl(ControlTemplate made, const FormLook& look, const ControlSink& sink)
      : FormControl(std::move(made), look, sink), handle_(*this) {}
  DateControl* date() final { return &handle_; }
  // The calendar that is seen, and its window; null: none is.
  virtual const CalendarFace* face() const = 0;
  virtual HWND face_window() const = 0;

 protected:
  virtual void date_is_set() = 0;
  virtual void calendar_is_set() = 0;
  virtual void picture_is_set() {}
  bool create_dated(HWND parent, const wchar_t* window_class);
  // Where a key of this moment leads from a date; nothing: nowhere.
  std::optional<MonthDayYear> after_key(const MonthDayYear& date, UINT key) const;
  static bool moves_date(UINT key) { return key >= VK_PRIOR && key <= VK_DOWN; }
  // A turn of the wheel, in months.
  MonthDayYear after_wheel(const MonthDayYear& date, WPARAM wparam);

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
  WheelTurns wheel_;
};

// A month that fills its place.
class CalendarControl : public DatedControl {
 public:
  CalendarControl(ControlTemplate made, const FormLook& look, const ControlSink& sink)
      : DatedControl(std::move(made), look, sink), face_(look) {}
  bool create(HWND parent) override;
  void put(const Rect& place) override;
  void set_name(const Text& name) override;
  bool uses_key(UINT key) const override;
  const CalendarFace* face() const override { return &face_; }
  HWND face_window() const override { return window(); }

 protected:
  void date_is_set() override;
  void calendar_is_set() override;
  LRESULT control_message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void move_to(const MonthDayYear& date);  // as a person does
  void tap(int part);
  bool press_key(UINT key);

  CalendarFace face_;
};

// The calendar that a picker drops down: above all else in the main window. It only shows; the
// field, which holds the pointer meanwhile, takes what is done.
class DroppedCalendar : public NativeWindow {
 public:
  DroppedCalendar(const FormLook& look, HWND field);
  CalendarFace& face() { return face_; }
  const CalendarFace& face() const { return face_; }
  bool open();  // below the field, else above it
  void refresh() { InvalidateRect(window(), nullptr, FALSE); }

 protected:
  LRESULT message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  const FormLook& look_;
  HWND field_;
  CalendarFace face_;
};

// A field with a date in the program's own words, which drops a calendar down.
class DatePickerControl : public DatedControl, private AccessibleSource {
 public:
  using DatedControl::DatedControl;
  bool create(HWND parent) override;
  void put(const Rect& place) override;
  bool uses_key(UINT key) const override;
  bool is_dropped_down() const override { return dropped_ != nullptr; }
  void close_drop() override;
  void press() override { drop(); }
  const CalendarFace* face() const override { return dropped_ ? &dropped_->face() : nullptr; }
  HWND face_window() const override { return dropped_ ? dropped_->window() : nullptr; }

 protected:
  void date_is_set() override;
  void calendar_is_set() override;
  void picture_is_set() override;
  LRESULT control_message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void drop();
  void take();
  void tap(int part);
  void take_pointer(UINT message, LPARAM lparam);
  bool press_key(UINT key);
  bool press_dropped_key(UINT key);
  void show_date(const MonthDayYear& date);
  Text shown() const;
  void paint(HDC given);

  AccessiblePart accessible_self() override;
  int accessible_count() override { return 0; }
  AccessiblePart accessible_part(int) override { return {}; }
  void press_accessible(int) override;

  std::unique_ptr<DroppedCalendar> dropped_;
  AccessibleWindow accessible_{*this};
};

}  // namespace orvello
