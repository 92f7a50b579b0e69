#include "hosts/qt/qt_accessible.h"

#include <QWidget>
#include <algorithm>
#include <map>

#include "draw/mirrored.h"
#include "hosts/qt/accessible_parts.h"
#include "hosts/qt/callbacks.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/drawn_cell.h"
#include "hosts/qt/drop_field.h"
#include "hosts/qt/modal_layer.h"
#include "hosts/qt/qt_shell.h"
#include "hosts/qt/qt_text.h"

namespace orvello {
namespace {

QRect place_on_screen(const QWidget& widget, const Density& density, const Rect& place) {
  const QRect inside = density.logical(place);
  return {widget.mapToGlobal(inside.topLeft()), inside.size()};
}

// The parts of a control, as buttons.
class AccessibleDrawing : public DrawnOwner {
 public:
  AccessibleDrawing(QWidget* widget, AccessibleParts& parts)
      : DrawnOwner(widget, QAccessible::Grouping), parts_(parts) {}

  // Asked anew each time: a control's parts are few, and nobody tells when they change.
  const AccessibleGrid& grid() const override {
    guarded([this] { grid_.cells = parts_.accessible_parts(); });
    grid_.columns = std::max(1, static_cast<int>(grid_.cells.size()));
    return grid_;
  }
  std::vector<Text> items(int) const override { return {}; }
  void press(int cell) override {
    guarded([&] { parts_.choose_part(cell); });
  }
  QRect on_screen(const Rect& place) const override {
    return place_on_screen(*drawn_on(), parts_.parts_density(), place);
  }
  QAccessible::Role cell_role(int) const override { return QAccessible::Button; }

 private:
  AccessibleParts& parts_;
  mutable AccessibleGrid grid_;
};

// The view in the content area. What it says is kept until it tells that it has changed.
class DrawnView : public DrawnOwner, public QAccessibleTableInterface {
 public:
  explicit DrawnView(ContentArea* content)
      : DrawnOwner(content, QAccessible::Client), content_(*content) {}
  const AccessibleGrid& grid() const override {
    if (known_ == content_.accessible_version()) return grid_;
    AccessibleView* view = content_.accessible_view();
    known_ = content_.accessible_version();
    items_.clear();
    guarded([&] { grid_ = view ? view->accessible_grid() : AccessibleGrid(); });
    return grid_;
  }
  std::vector<Text> items(int cell) const override {
    grid();  // drops what is old
    const auto known = items_.find(cell);
    if (known != items_.end()) return known->second;
    AccessibleView* view = content_.accessible_view();
    std::vector<Text>& items = items_[cell];
    if (view) guarded([&] { items = view->accessible_items(cell); });
    return items;
  }
  void press(int cell) override {
    AccessibleView* view = content_.accessible_view();
    if (view && !is_covered(content_)) guarded([&] { view->choose_accessible(cell); });
  }
  QRect on_screen(const Rect& place) const override {
    const int width = content_.density().device(content_.width());
    return place_on_screen(content_, content_.density(),
                           is_right_to_left() ? mirrored(place, width) : place);
  }
  QAccessible::Role cell_role(int cell) const override {
    return cell < days() ? QAccessible::Cell : QAccessible::Button;
  }
  int days() const { return cell_count() - grid().buttons; }

  // A dialog that fills the area stands in the view's place, and nothing to tell is no table.
  bool shows_view() const {
    if (!content_.accessible_view()) return false;
    for (const QObject* child : content_.children())
      if (const auto* sheet = qobject_cast<const QWidget*>(child); sheet && !sheet->isHidden())
        return false;
    return cell_count() > 0;
  }
  QAccessible::Role role() const override {
    return shows_view() ? QAccessible::Table : QAccessible::Client;
  }
  QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Name && shows_view()) return to_qt(grid().name);
    return QAccessibleWidget::text(kind);
  }
  int childCount() const override {
    return shows_view() ? cell_count() : QAccessibleWidget::childCount();
  }
  QAccessibleInterface* child(int index) const override {
    return shows_view() ? DrawnOwner::child(index) : QAccessibleWidget::child(index);
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return shows_view() ? DrawnOwner::indexOfChild(child) : QAccessibleWidget::indexOfChild(child);
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    return shows_view() ? DrawnOwner::childAt(x, y) : QAccessibleWidget::childAt(x, y);
  }
  QAccessibleInterface* focusChild() const override {
    return shows_view() ? DrawnOwner::focusChild() : QAccessibleWidget::focusChild();
  }
  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::TableInterface && shows_view())
      return static_cast<QAccessibleTableInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }

  QAccessibleInterface* caption() const override { return nullptr; }
  QAccessibleInterface* summary() const override { return nullptr; }
  QAccessibleInterface* cellAt(int row, int column) const override {
    const bool inside = row >= 0 && column >= 0 && column < columnCount();
    const int cell = row * columnCount() + column;
    return inside && cell < days() ? DrawnOwner::child(cell) : nullptr;
  }
  int selectedCellCount() const override { return selected_cell() >= 0 ? 1 : 0; }
  QList<QAccessibleInterface*> selectedCells() const override {
    const int selected = selected_cell();
    if (selected < 0) return {};
    return {DrawnOwner::child(selected)};
  }
  QString columnDescription(int) const override { return {}; }
  QString rowDescription(int) const override { return {}; }
  int selectedColumnCount() const override { return 0; }
  int selectedRowCount() const override { return 0; }
  int columnCount() const override { return std::max(1, grid().columns); }
  int rowCount() const override { return (days() + columnCount() - 1) / columnCount(); }
  QList<int> selectedColumns() const override { return {}; }
  QList<int> selectedRows() const override { return {}; }
  bool isColumnSelected(int) const override { return false; }
  bool isRowSelected(int) const override { return false; }
  bool selectRow(int) override { return false; }
  bool selectColumn(int) override { return false; }
  bool unselectRow(int) override { return false; }
  bool unselectColumn(int) override { return false; }
  void modelChange(QAccessibleTableModelChangeEvent*) override {}

 private:
  ContentArea& content_;
  mutable int known_ = -1;
  mutable AccessibleGrid grid_;
  mutable std::map<int, std::vector<Text>> items_;
};

// What is modal says so: a screen reader stays inside.
class ModalSheet : public QAccessibleWidget {
 public:
  explicit ModalSheet(QWidget* layer) : QAccessibleWidget(layer, QAccessible::Dialog) {}
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.modal = true;
    return state;
  }
};

// A drop list, a combo or a date picker: pressing it drops it down.
class DroppingField : public QAccessibleWidget {
 public:
  DroppingField(QWidget* widget, DropField& field)
      : QAccessibleWidget(widget, QAccessible::ComboBox), field_(field) {}
  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? field_.shown() : QAccessibleWidget::text(kind);
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = true;
    state.expanded = field_.is_open();
    state.collapsed = !field_.is_open();
    return state;
  }
  QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
  void doAction(const QString& name) override {
    QAccessibleWidget::doAction(name);
    if (name == pressAction() && !is_covered(*widget())) field_.open();
  }

 private:
  DropField& field_;
};

QAccessibleInterface* make_interface(const QString&, QObject* object) {
  auto* widget = qobject_cast<QWidget*>(object);
  if (!widget) return nullptr;
  if (auto* content = dynamic_cast<ContentArea*>(widget)) return new DrawnView(content);
  if (auto* field = dynamic_cast<DropField*>(widget)) return new DroppingField(widget, *field);
  if (dynamic_cast<ModalLayer*>(widget)) return new ModalSheet(widget);
  if (auto* parts = dynamic_cast<AccessibleParts*>(widget))
    return new AccessibleDrawing(widget, *parts);
  return nullptr;
}

}  // namespace

// The toolkit keeps one of each.
void install_accessibility() { QAccessible::installFactory(&make_interface); }

void tell_accessible_change(QWidget& widget) {
  if (!QAccessible::isActive()) return;
  auto* owner = dynamic_cast<DrawnOwner*>(QAccessible::queryAccessibleInterface(&widget));
  QAccessibleInterface* focused = owner ? owner->focusChild() : nullptr;
  if (!focused) return;
  QAccessibleEvent event(focused, QAccessible::Focus);
  QAccessible::updateAccessibility(&event);
}

}  // namespace orvello
