// A month to choose a day from, drawn in the form's look: what a calendar on a form and one that a
// date picker drops down show, take from the pointer and tell a screen reader.
#pragma once

#include <windows.h>

#include "hosts/shared/month_pad.h"
#include "hosts/win32/accessible_object.h"
#include "hosts/win32/form_look.h"

namespace orvello {

class CalendarFace : private AccessibleSource {
 public:
  // What a screen reader presses is posted to `owner` as this message, the part in wparam.
  static constexpr UINT kPressPart = WM_APP + 1;
  explicit CalendarFace(const FormLook& look) : look_(look) {}

  // The window that it fills, and who hears what is pressed.
  void set_windows(HWND shown, HWND owner);
  void set_size(Size size) { pad_.set_size(size, look_.unit()); }
  void set_date(const MonthDayYear& date) { pad_.set_date(date); }
  void set_calendar(const MonthDayYear& today, bool monday_first);
  void set_name(const Text& name) { name_ = name; }
  const MonthDayYear& date() const { return pad_.date(); }
  const MonthPad& pad() const { return pad_; }
  RECT place(int part) const;  // in its window

  void paint(HDC dc, bool focused) const;
  // Points of its window.
  void press(POINT at) { pressed_ = part_at(at); }
  int release(POINT at);  // the part that was tapped; -1: none
  void let_go() { pressed_ = -1; }
  static bool is_day(int part) { return part >= MonthPad::kArrows; }

  std::optional<LRESULT> answer(WPARAM wparam, LPARAM lparam) {
    return accessible_.answer(shown_, wparam, lparam);
  }
  int selected_part() const;

 private:
  int part_at(POINT at) const;
  RECT turned(const Rect& place) const;
  void paint_heading(HDC dc) const;
  void paint_arrow(HDC dc, int arrow) const;
  void paint_names(HDC dc) const;
  void paint_day(HDC dc, int part, bool focused) const;

  AccessiblePart accessible_self() override;
  int accessible_count() override { return MonthPad::kParts; }
  AccessiblePart accessible_part(int part) override;
  int accessible_focus() override { return selected_part(); }
  void press_accessible(int part) override;

  const FormLook& look_;
  MonthPad pad_;
  MonthDayYear today_{};
  Text name_;
  HWND shown_ = nullptr, owner_ = nullptr;
  int pressed_ = -1;
  AccessibleWindow accessible_{*this};
};

}  // namespace orvello
