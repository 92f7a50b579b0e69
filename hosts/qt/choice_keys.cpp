// What the keyboard does to a drop list or combo.
#include <QKeyEvent>
#include <QListWidget>
#include <algorithm>

#include "hosts/qt/choice_box.h"
#include "hosts/qt/drop_panel.h"
#include "hosts/qt/flat_edit.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_text.h"

namespace orvello {

void ChoiceBox::step_to(int row) {
  if (rows_.empty()) return;
  row = std::clamp(row, 0, static_cast<int>(rows_.size()) - 1);
  if (row == selected()) return;
  select(row);
  if (changed) changed();
}

bool ChoiceBox::take_open_key(int key) {
  switch (key) {
    case Qt::Key_Escape:
    case Qt::Key_F4:
      panel_->close_soon();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (list_->currentRow() >= 0)
        take(list_->currentRow());
      else
        panel_->close_soon();
      return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
      const int page = std::max(1, list_->viewport()->height() / density_.scaled(kTouchHeight) - 1);
      const int by = key == Qt::Key_Up       ? -1
                     : key == Qt::Key_Down   ? 1
                     : key == Qt::Key_PageUp ? -page
                                             : page;
      const int last = std::max(0, list_->count() - 1);
      list_->setCurrentRow(std::clamp(list_->currentRow() + by, 0, last));
      return true;
    }
    default:
      return false;
  }
}

bool ChoiceBox::take_key(const QKeyEvent& event) {
  const int key = event.key();
  const bool vertical = key == Qt::Key_Down || key == Qt::Key_Up;
  if (is_open()) {
    if (vertical && event.modifiers() & Qt::AltModifier) {
      panel_->close_soon();
      return true;
    }
    if (take_open_key(key)) return true;
  } else if (key == Qt::Key_F4 || (vertical && event.modifiers() & Qt::AltModifier) ||
             (key == Qt::Key_Space && !edit_)) {
    open();
    return true;
  } else if (vertical) {
    step_to(key == Qt::Key_Up ? selected() - 1 : selected() + 1);
    return true;
  }
  if (edit_) return false;
  const bool plain = !(event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
  if (key == Qt::Key_Home || key == Qt::Key_End) {
    const int row = key == Qt::Key_Home ? 0 : static_cast<int>(rows_.size()) - 1;
    if (is_open())
      list_->setCurrentRow(row);
    else
      step_to(row);
    return true;
  }
  return plain && !event.text().isEmpty() && event.text()[0].isPrint() && find_row(event.text());
}

// The next row that begins so, round in a circle.
bool ChoiceBox::find_row(const QString& typed) {
  const int count = static_cast<int>(rows_.size());
  const int start = is_open() ? list_->currentRow() : selected();
  for (int i = 1; i <= count; ++i) {
    const int row = (start + i) % count;
    if (!to_qt(rows_[static_cast<std::size_t>(row)]).startsWith(typed, Qt::CaseInsensitive))
      continue;
    if (is_open())
      list_->setCurrentRow(row);
    else
      step_to(row);
    return true;
  }
  return false;
}

void ChoiceBox::keyPressEvent(QKeyEvent* event) {
  if (!take_key(*event)) QWidget::keyPressEvent(event);
}

bool ChoiceBox::filter_event(QObject*, QEvent* event) {
  if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) update();
  // Escape of an open list is not the form's.
  if (event->type() == QEvent::KeyPress) return take_key(*static_cast<QKeyEvent*>(event));
  return false;
}

}  // namespace orvello
