// The rows of a report list for the toolkit: heights, texts for a screen reader, and a delegate
// that draws them.
#pragma once

#include <QFont>
#include <QImage>
#include <vector>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"
#include "ports/report_list.h"

namespace orvello {

class ReportModel : public GuardedRows {
 public:
  ReportModel(const Density& density, QObject* parent) : GuardedRows(parent), density_(density) {}

  void set_content(ReportContent content);
  const ReportContent& content() const { return content_; }
  const ReportRow& row(int index) const { return content_.rows[static_cast<std::size_t>(index)]; }
  bool has_row(int index) const { return index >= 0 && index < rowCount({}); }
  int column_width(std::size_t column) const { return widths_[column]; }
  int whole_width() const;  // of all columns
  int mark_width() const;   // of a mark's box and the gap behind it; 0: no row has one
  int mark_side() const;    // of the box
  void set_mark(int row, ReportMark mark);
  // Rows are as wide as their columns, not as the list.
  void set_sideways(bool sideways) { sideways_ = sideways; }
  bool is_sideways() const { return sideways_; }
  const QFont& font(bool bold) const { return bold ? bold_font_ : font_; }
  const QImage* picture(int index) const;
  int pictures_width(const ReportRow& row) const;

  int rowCount(const QModelIndex& parent) const override;

 protected:
  QVariant row_data(const QModelIndex& index, int role) const override;

 private:
  int needed_width(std::size_t column) const;

  ReportContent content_;
  std::vector<int> widths_;
  bool sideways_ = false;
  const Density& density_;
  QFont font_, bold_font_;
  std::vector<QImage> pictures_;
};

// One line, shortened to its room by the canvas's measure: what was measured to fit is not.
void draw_cell_text(QPainter& painter, QString text, const QRect& room, Align align);

class ReportDelegate : public GuardedDelegate {
 public:
  ReportDelegate(const ReportModel& model, const Density& density, QObject* parent)
      : GuardedDelegate(parent), model_(model), density_(density) {}

 protected:
  QSize row_size(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void paint_row(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;

 private:
  void draw_cell(QPainter& painter, const ReportRow& row, std::size_t column, const QRect& box,
                 QRgb color) const;
  void draw_pictures(QPainter& painter, const ReportRow& row, const QRect& box) const;
  void draw_mark(QPainter& painter, const ReportRow& row, const QRect& box, QRgb color) const;

  const ReportModel& model_;
  const Density& density_;
};

}  // namespace orvello
