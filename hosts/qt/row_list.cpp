#include "hosts/qt/row_list.h"

#include <QKeyEvent>
#include <algorithm>
#include <utility>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/qt_text.h"
#include "hosts/qt/row_delegate.h"

namespace orvello {

RowList::RowList(QWidget* parent, const Density& density, bool several)
    : FlatArea<QListWidget>(parent, density) {
  make_flat_rows(*this, density);
  setSelectionMode(several ? MultiSelection : SingleSelection);
  setEditTriggers(NoEditTriggers);
  on_signal(this, &QListWidget::itemSelectionChanged, this, [this] {
    if (!setting_ && changed) changed();
  });
  on_signal(this, &QListWidget::itemClicked, this, [this] {
    if (taken) taken();
  });
}

void RowList::set_rows(const std::vector<Text>& rows) {
  const bool was = std::exchange(setting_, true);
  clear();
  for (const Text& row : rows) new QListWidgetItem(to_qt(row), this);
  setting_ = was;
}

std::vector<Text> RowList::rows() const {
  std::vector<Text> rows;
  for (int row = 0; row < count(); ++row) rows.push_back(from_qt(item(row)->text()));
  return rows;
}

std::vector<int> RowList::selected() const {
  std::vector<int> rows;
  for (const QModelIndex& index : selectionModel()->selectedIndexes()) rows.push_back(index.row());
  std::sort(rows.begin(), rows.end());
  return rows;
}

void RowList::select(const std::vector<int>& rows) {
  const bool was = std::exchange(setting_, true);
  selectionModel()->clear();
  for (const int row : rows) {
    const QModelIndex index = model()->index(row, 0);
    if (!index.isValid()) continue;
    if (!currentIndex().isValid())
      selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    selectionModel()->select(index, QItemSelectionModel::Select);
    if (selectionMode() == SingleSelection) break;
  }
  setting_ = was;
}

void RowList::show_row(int row) {
  if (QListWidgetItem* shown = item(row)) scrollToItem(shown);
}

void RowList::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (key == Qt::Key_Return || key == Qt::Key_Enter) {
    if (taken) taken();
    return;
  }
  // Escape is the form's.
  if (key == Qt::Key_Escape) return event->ignore();
  QListWidget::keyPressEvent(event);
  const bool several = selectionMode() == MultiSelection;
  if (several && key == Qt::Key_Space && currentItem() && taken) taken();
}

// The toolkit would put its current row somewhere.
void RowList::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

}  // namespace orvello
