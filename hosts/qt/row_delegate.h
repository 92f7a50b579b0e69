// Rows as high as a finger needs, or higher where their text wraps: of lists and drop lists.
#pragma once

#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"

class QListWidget;

namespace orvello {

class RowDelegate : public GuardedDelegate {
 public:
  RowDelegate(const Density& density, QObject* parent)
      : GuardedDelegate(parent), density_(density) {}
  int wanted_width(const QString& text) const;  // of a row in one line

 protected:
  QSize row_size(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void paint_row(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;

 private:
  QRect text_room(const QRect& row) const;

  const Density& density_;
};

// What lists and drop lists have in common: wrapping rows, a flat scroll bar, no sideways one.
void make_flat_rows(QListWidget& list, const Density& density);

}  // namespace orvello
