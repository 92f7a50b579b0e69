// A report list: rows that look as the program says, drawn by a delegate.
#pragma once

#include <QListView>
#include <vector>

#include "hosts/qt/control_input.h"
#include "hosts/qt/flat_field.h"
#include "hosts/qt/glide.h"

namespace orvello {

class FocusEdge;
class ReportModel;
class ReportTitles;

class ReportView : public FlatArea<QListView> {
 public:
  // One that stands at the form's edge has no edge of its own.
  ReportView(QWidget* parent, const Density& density, const ControlTemplate& control,
             ControlInput::Report report);

  const Density& density() const { return density_; }
  void set_content(ReportContent content);
  ReportPlace report_place() const;
  void select_rows(const std::vector<int>& rows);
  void set_mark(int row, ReportMark mark);
  Rect row_place(int row) const;
  int row_at(Point point) const;
  void scroll_pixels(int pixels);
  void show_row(int row);
  void glide(int pixels_per_second);
  bool gliding() const { return glide_.goes(); }
  // Gives everything its place also while it is not shown yet.
  void lay_out_unseen();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool take_viewport_event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void selected_by_other(int row);
  QRect rect_of(int row) const;
  void lay_out_columns();
  void place_titles();
  bool scroll_on(double logical_pixels);  // false: at an end
  bool take_press(QEvent& event);
  void use_keys(bool keys);
  bool take_wheel(QWheelEvent& event);

  const Density& density_;
  ControlInput input_;
  ReportModel* model_;
  ReportTitles* titles_;
  FocusEdge* focus_edge_;
  std::vector<int> selected_;
  bool selecting_ = false;
  bool keys_used_ = false;  // last, and not the pointer
  double scroll_rest_ = 0;  // less than a logical pixel
  Glide glide_;
};

}  // namespace orvello
