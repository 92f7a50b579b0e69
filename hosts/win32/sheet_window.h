// What a sheet consists of: a title, tabs, the pages' place, OK and Cancel.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "hosts/win32/form_window.h"
#include "hosts/win32/sheet_tab_bar.h"

namespace orvello {

class SheetWindow : public NativeWindow {
 public:
  SheetWindow(const FormLook& look, Text title);
  bool create(HWND parent, const std::vector<Text>& titles);

  std::function<void()> ok_wanted, cancel_wanted;
  std::function<void(int)> page_wanted;

  void add_page(std::shared_ptr<FormWindow> page);
  void show_page(int page);
  void name_page(int page, const Text& title) { tabs_.set_title(page, title); }
  // Round in a circle.
  void turn(int by);
  // Tab behind a page's last control, or before its first.
  bool leave_page(bool back);
  // What is not a page's: with a row of buttons below it where there is room, else OK stands in the
  // title.
  int frame_height(bool roomy) const;
  int tabs_width() const { return tabs_.width(); }
  void put(const Rect& place, bool roomy, bool framed);

 protected:
  LRESULT message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  int title_height() const { return look_.scaled(kTouchHeight + 1); }
  int buttons_height() const { return look_.scaled(kTouchHeight + 4 * kGrid); }
  int edge() const { return framed_ ? std::max(1, look_.scaled(1)) : 0; }
  Rect turned(const Rect& place) const;
  void lay_out();
  void paint(HDC given);
  bool take_key(HWND from, UINT key);
  void move_focus(HWND from, bool back);

  const FormLook& look_;
  Text title_;
  bool roomy_ = false, framed_ = false;
  SheetTabBar tabs_;
  FrameButton ok_, cancel_, close_;
  std::vector<std::shared_ptr<FormWindow>> pages_;
  Size size_;
};

}  // namespace orvello
