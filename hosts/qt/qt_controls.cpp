#include "hosts/qt/qt_controls.h"

#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <algorithm>

#include "hosts/qt/custom_area.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_text.h"
#include "hosts/qt/touch_menu.h"

namespace orvello {
namespace {

// Rows as high as a finger needs, or higher where their text wraps.
class RowDelegate : public QStyledItemDelegate {
 public:
  RowDelegate(int least, QObject* parent) : QStyledItemDelegate(parent), least_(least) {}
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return QStyledItemDelegate::sizeHint(option, index).expandedTo({0, least_});
  }

 private:
  int least_;
};

}  // namespace

QtList::QtList(QListWidget* list, const Density& density) : list_(list) {
  list->setItemDelegate(new RowDelegate(density.scaled(kTouchHeight), list));
}

void QtList::set_rows(const std::vector<Text>& rows) {
  if (!list_) return;
  const QSignalBlocker silence(list_);
  list_->clear();
  for (const Text& row : rows) new QListWidgetItem(to_qt(row), list_);
}

std::vector<Text> QtList::rows() const {
  std::vector<Text> rows;
  for (int row = 0; list_ && row < list_->count(); ++row)
    rows.push_back(from_qt(list_->item(row)->text()));
  return rows;
}

std::vector<int> QtList::selected() const {
  if (!list_ || !list_->currentItem()) return {};
  return {list_->currentRow()};
}

void QtList::select(const std::vector<int>& rows) {
  if (!list_) return;
  const QSignalBlocker silence(list_);
  list_->setCurrentRow(rows.empty() ? -1 : rows.front());
}

void QtList::show_row(int row) {
  if (list_ && list_->item(row)) list_->scrollToItem(list_->item(row));
}

void QtDrawn::set_image(const Image&) {}

void QtDrawn::set_parts(const std::vector<AccessibleCell>& parts) {
  if (auto* area = dynamic_cast<CustomArea*>(widget_.data())) area->set_parts(parts);
}

std::uint32_t QtDrawn::track_menu(const std::vector<MenuItem>& items, Point at) {
  if (!widget_) return 0;
  const QWidget* window = widget_->window();
  const QPoint point =
      widget_->mapTo(window, QPoint(density_.logical(at.x), density_.logical(at.y)));
  // Inside the window as far as it fits.
  const auto place = [&](QSize size) {
    const int x = std::max(0, std::min(point.x(), window->width() - size.width()));
    const int y = std::max(0, std::min(point.y(), window->height() - size.height()));
    return window->mapToGlobal(QPoint(x, y));
  };
  return run_touch_menu(density_, items, place);
}

}  // namespace orvello
