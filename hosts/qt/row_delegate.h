// Rows as high as a finger needs, or higher where their text wraps: of lists and drop lists.
#pragma once

#include <QStyledItemDelegate>

#include "hosts/qt/density.h"

class QListWidget;

namespace orvello {

class RowDelegate : public QStyledItemDelegate {
 public:
  RowDelegate(const Density& density, QObject* parent)
      : QStyledItemDelegate(parent), density_(density) {}
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;

 private:
  QRect text_room(const QRect& row) const;

  const Density& density_;
};

// What lists and drop lists have in common: wrapping rows, a flat scroll bar, no sideways one.
void make_flat_rows(QListWidget& list, const Density& density);

}  // namespace orvello
