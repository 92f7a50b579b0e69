// A report list without a screen: rows below each other, scrolled by pixels.
#pragma once

#include "ports/report_list.h"

namespace orvello {

class HeadlessReport : public ReportList {
 public:
  explicit HeadlessReport(const Rect& place) : place_(place) {}

  void set_content(ReportContent content) override;
  ReportPlace place() const override { return {{place_.width, place_.height}, 13, 1}; }
  void select(const std::vector<int>& rows) override { selected = rows; }
  void set_mark(int row, ReportMark mark) override;
  Rect row_place(int row) const override;
  int row_at(Point point) const override;
  void scroll_by(int pixels) override;
  void show_row(int row) override;
  void glide(int pixels_per_second) override { speed_ = pixels_per_second; }
  bool gliding() const override { return speed_ != 0; }

  void come_to_rest();  // time passes until a gliding list stands
  void move(const Rect& place) { place_ = place; }
  bool scrolls() const { return lowest() > 0; }
  int titles_height() const;  // 0: there are none
  const ReportContent& content() const { return content_; }
  // The middle of a row, in the list.
  Point point_of(int row) const;

  std::vector<int> selected;
  int scrolled = 0;

 private:
  int top_of(int row) const;
  int lowest() const;  // how far it can be scrolled
  Rect place_;
  ReportContent content_;
  int speed_ = 0;  // of the glide
};

}  // namespace orvello
