#include "hosts/qt/drawn_cell.h"

#include <QWidget>

#include "hosts/qt/qt_text.h"

namespace orvello {

bool DrawnCell::isValid() const {
  if (!owner_.isValid() || !owner_.cell(cell_)) return false;
  return item_ < 0 || item_ < static_cast<int>(owner_.items(cell_).size());
}

QWindow* DrawnCell::window() const { return owner_.window(); }

QAccessibleInterface* DrawnCell::parent() const {
  if (item_ >= 0) return owner_.interface_of(cell_, -1);
  return &owner_;
}

QAccessibleInterface* DrawnCell::child(int index) const {
  return index >= 0 && index < childCount() ? owner_.interface_of(cell_, index) : nullptr;
}

int DrawnCell::childCount() const {
  return item_ < 0 && owner_.cell(cell_) ? static_cast<int>(owner_.items(cell_).size()) : 0;
}

int DrawnCell::indexOfChild(const QAccessibleInterface* child) const {
  const auto* item = dynamic_cast<const DrawnCell*>(child);
  return item && item_ < 0 && &item->owner_ == &owner_ && item->cell_ == cell_ ? item->item_ : -1;
}

QString DrawnCell::text(QAccessible::Text kind) const {
  if (kind != QAccessible::Name || !isValid()) return {};
  if (item_ < 0) return to_qt(owner_.cell(cell_)->name);
  return to_qt(owner_.items(cell_)[static_cast<std::size_t>(item_)]);
}

// An item has no place of its own: it lies somewhere in its cell.
QRect DrawnCell::rect() const {
  const AccessibleCell* cell = owner_.cell(cell_);
  return cell ? owner_.on_screen(cell->place) : QRect();
}

QAccessible::Role DrawnCell::role() const {
  return item_ < 0 ? owner_.cell_role(cell_) : QAccessible::ListItem;
}

QAccessible::State DrawnCell::state() const {
  QAccessible::State state;
  const AccessibleCell* cell = owner_.cell(cell_);
  if (!cell) {
    state.invalid = true;
    return state;
  }
  state.invisible = !owner_.drawn_on()->isVisible();
  state.disabled = !owner_.drawn_on()->isEnabled();
  if (item_ >= 0) return state;
  state.selectable = state.focusable = true;
  state.selected = cell->selected;
  state.focused = cell->selected && owner_.drawn_on()->hasFocus();
  return state;
}

void* DrawnCell::interface_cast(QAccessible::InterfaceType type) {
  if (item_ >= 0) return nullptr;
  if (type == QAccessible::ActionInterface) return static_cast<QAccessibleActionInterface*>(this);
  if (type == QAccessible::TableCellInterface && owner_.cell_role(cell_) == QAccessible::Cell)
    return static_cast<QAccessibleTableCellInterface*>(this);
  return nullptr;
}

void DrawnCell::doAction(const QString& name) {
  if (name == pressAction() && isValid()) owner_.press(cell_);
}

int DrawnCell::columnIndex() const { return cell_ % std::max(1, owner_.grid().columns); }
int DrawnCell::rowIndex() const { return cell_ / std::max(1, owner_.grid().columns); }

DrawnOwner::~DrawnOwner() {
  for (const auto& [key, id] : made_) QAccessible::deleteAccessibleInterface(id);
}

const AccessibleCell* DrawnOwner::cell(int index) const {
  const auto& cells = grid().cells;
  const auto at = static_cast<std::size_t>(index);
  return index >= 0 && at < cells.size() ? &cells[at] : nullptr;
}

int DrawnOwner::selected_cell() const {
  for (int i = 0; i < cell_count(); ++i)
    if (cell(i)->selected) return i;
  return -1;
}

DrawnCell* DrawnOwner::interface_of(int cell, int item) const {
  const auto known = made_.find({cell, item});
  if (known != made_.end())
    if (auto* made = QAccessible::accessibleInterface(known->second))
      return static_cast<DrawnCell*>(made);
  auto* made = new DrawnCell(const_cast<DrawnOwner&>(*this), cell, item);
  made_[{cell, item}] = QAccessible::registerAccessibleInterface(made);
  return made;
}

QAccessibleInterface* DrawnOwner::child(int index) const {
  return cell(index) ? interface_of(index, -1) : nullptr;
}

int DrawnOwner::indexOfChild(const QAccessibleInterface* child) const {
  const auto* drawn = dynamic_cast<const DrawnCell*>(child);
  return drawn && drawn->item() < 0 && drawn->parent() == this ? drawn->cell() : -1;
}

QAccessibleInterface* DrawnOwner::childAt(int x, int y) const {
  for (int i = 0; i < cell_count(); ++i)
    if (on_screen(cell(i)->place).contains(x, y)) return child(i);
  return nullptr;
}

QAccessibleInterface* DrawnOwner::focusChild() const {
  const int selected = selected_cell();
  return drawn_on()->hasFocus() && selected >= 0 ? child(selected) : nullptr;
}

}  // namespace orvello
