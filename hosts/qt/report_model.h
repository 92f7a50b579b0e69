// The rows of a report list for the toolkit: heights, texts for a screen reader, and a delegate
// that draws them.
#pragma once

#include <QAbstractListModel>
#include <QFont>
#include <QImage>
#include <QStyledItemDelegate>
#include <vector>

#include "hosts/qt/density.h"
#include "ports/report_list.h"

namespace orvello {

class ReportModel : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  void set_content(ReportContent content);
  const ReportContent& content() const { return content_; }
  const ReportRow& row(int index) const { return content_.rows[static_cast<std::size_t>(index)]; }
  void set_mark(int index, ReportMark mark);
  bool has_row(int index) const { return index >= 0 && index < rowCount({}); }
  const QFont& font(bool bold) const { return bold ? bold_font_ : font_; }
  const QImage* picture(int index) const;

  int rowCount(const QModelIndex& parent) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  ReportContent content_;
  QFont font_, bold_font_;
  std::vector<QImage> pictures_;
};

class ReportDelegate : public QStyledItemDelegate {
 public:
  ReportDelegate(const ReportModel& model, const Density& density, QObject* parent)
      : QStyledItemDelegate(parent), model_(model), density_(density) {}

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;

 private:
  void draw_cell(QPainter& painter, const ReportRow& row, std::size_t column, const QRect& box,
                 QRgb color) const;
  void draw_pictures(QPainter& painter, const ReportRow& row, const QRect& box) const;

  const ReportModel& model_;
  const Density& density_;
};

}  // namespace orvello
