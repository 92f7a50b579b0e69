// A report list: rows that look as the program says, drawn by a delegate.
#pragma once

#include <QListView>
#include <QPointer>
#include <vector>

#include "hosts/qt/control_input.h"

namespace orvello {

class ReportModel;

class ReportView : public QListView {
 public:
  ReportView(QWidget* parent, const Density& density, int control, ControlInput::Report report);

  const Density& density() const { return density_; }
  void set_content(ReportContent content);
  ReportPlace report_place() const;
  void select_rows(const std::vector<int>& rows);
  void set_mark(int row, ReportMark mark);
  Rect row_place(int row) const;
  int row_at(Point point) const;
  void scroll_pixels(int pixels);
  void show_row(int row);
  // Gives everything its place also while it is not shown yet.
  void lay_out_unseen();

 protected:
  bool viewportEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  void selected_by_other(int row);
  QRect rect_of(int row) const;

  const Density& density_;
  ControlInput input_;
  ReportModel* model_;
  std::vector<int> selected_;
  bool selecting_ = false;
  double scroll_rest_ = 0;  // less than a logical pixel
};

// The port's view of it. Outlives the widget.
class QtReport : public ReportList {
 public:
  explicit QtReport(ReportView* view) : view_(view) {}
  void set_content(ReportContent content) override {
    if (view_) view_->set_content(std::move(content));
  }
  ReportPlace place() const override { return view_ ? view_->report_place() : ReportPlace(); }
  void select(const std::vector<int>& rows) override {
    if (view_) view_->select_rows(rows);
  }
  void set_mark(int row, ReportMark mark) override {
    if (view_) view_->set_mark(row, mark);
  }
  Rect row_place(int row) const override { return view_ ? view_->row_place(row) : Rect(); }
  int row_at(Point point) const override { return view_ ? view_->row_at(point) : -1; }
  void scroll_by(int pixels) override {
    if (view_) view_->scroll_pixels(pixels);
  }
  void show_row(int row) override {
    if (view_) view_->show_row(row);
  }

 private:
  QPointer<ReportView> view_;
};

}  // namespace orvello
