// A report list: a window that draws its rows as their content says, and scrolls them by itself.
#pragma once

#include <memory>

#include "draw/report_pane.h"
#include "hosts/shared/glide_motion.h"
#include "hosts/win32/form_scroll_bar.h"
#include "hosts/win32/pointed_control.h"
#include "hosts/win32/win32_surface.h"

namespace orvello {

class ReportWindow : public PointedControl, public ReportList, private AccessibleSource {
 public:
  ReportWindow(ControlTemplate made, const FormLook& look, const ControlSink& sink);

  bool create(HWND parent) override;
  void put(const Rect& place) override;
  void look_changed() override;
  ReportList* report() override { return this; }

  void set_content(ReportContent content) override;
  ReportPlace place() const override;
  void select(const std::vector<int>& rows) override;
  void set_mark(int row, ReportMark mark) override;
  Rect row_place(int row) const override;
  int row_at(Point point) const override;
  void scroll_by(int pixels) override;
  void glide(int pixels_per_second) override;
  bool gliding() const override { return motion_.goes(); }
  void show_row(int row) override;

 protected:
  LRESULT control_message(UINT message, WPARAM wparam, LPARAM lparam) override;
  bool takes_press(Point client) const override;
  void before_press() override;
  void after_press() override;
  void before_key() override { use_keys(true); }
  bool scrolls_with(int delta, bool sideways) override;

 private:
  int border() const;
  Rect room() const;                    // inside of the border
  Rect turned(const Rect& rect) const;  // of the room's places: into the window's
  Canvas& measuring();
  void lay_out();
  void place_bars();
  bool scroll_on(double pixels);
  void scroll_to(int top);
  void end_glide();
  void glide_on();
  void use_keys(bool keys);
  void paint();
  void paint_edge(HDC screen) const;
  Rect row_on_screen(int row) const;

  AccessiblePart accessible_self() override;
  int accessible_count() override { return pane_.row_count(); }
  AccessiblePart accessible_part(int part) override;
  int accessible_focus() override { return pane_.first_selected(); }
  std::vector<int> accessible_selection() override { return selected_; }
  int accessible_at(Point screen) override;
  void press_accessible(int part) override;

  ReportPane pane_;
  FormScrollBar down_, sideways_;
  std::unique_ptr<Win32Surface> surface_;  // as large as the room
  Size surface_size_;
  std::vector<int> selected_;
  bool keys_used_ = false;  // last, and not the pointer
  double scroll_rest_ = 0;  // less than a pixel
  GlideMotion motion_;
  ULONGLONG last_step_ = 0;  // of the glide
  AccessibleWindow accessible_{*this};
};

}  // namespace orvello
