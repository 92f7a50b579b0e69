// The tabs of a sheet: the platform's tab control, as wide as all of them need, which moves behind
// a gap between two arrows where that is too narrow.
#pragma once

#include <functional>
#include <vector>

#include "hosts/win32/frame_button.h"
#include "hosts/win32/native_window.h"

namespace orvello {

class SheetTabBar;

class SheetTabControl : public NativeWindow {
 public:
  SheetTabControl(SheetTabBar& bar, const FormLook& look) : bar_(bar), look_(look) {}
  bool create(HWND parent);

 protected:
  LRESULT message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void paint(HDC given);
  SheetTabBar& bar_;
  const FormLook& look_;
};

class SheetTabBar : public NativeWindow {
 public:
  explicit SheetTabBar(const FormLook& look);
  bool create(HWND parent, const std::vector<Text>& titles);

  std::function<void(int page)> wanted;    // another page, by the person
  std::function<bool(UINT key)> key_left;  // true: done with

  void put(const Rect& place);
  void show_tab(int page);
  void set_title(int page, const Text& title);
  const Text& title(int page) const { return titles_[static_cast<std::size_t>(page)]; }
  int shown() const { return shown_; }
  int count() const { return static_cast<int>(titles_.size()); }
  int width() const;  // of all tabs
  int height() const { return look_.scaled(kTouchHeight + 1); }
  HWND tabs() const { return tabs_.window(); }
  RECT tab_place(int page) const;  // in the tab control
  int tab_at(POINT point) const;   // -1: none
  void bring_in_sight(int page);

 protected:
  LRESULT message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  int tab_width(int page) const;
  void move_to(int left);

  const FormLook& look_;
  SheetTabControl tabs_;
  FrameButton back_, forward_;
  std::vector<Text> titles_;
  int shown_ = 0;
  int left_ = 0;
};

}  // namespace orvello
