// One thing without a widget, for a screen reader: a name, a place, and perhaps a press.
#pragma once

#include <QAccessible>
#include <QAccessibleWidget>
#include <map>
#include <memory>

#include "base/geometry.h"
#include "ports/accessibility.h"

namespace orvello {

class DrawnOwner;

// It only knows its number: what it is called and where it stands, its owner knows.
class DrawnCell : public QAccessibleInterface,
                  public QAccessibleActionInterface,
                  public QAccessibleTableCellInterface {
 public:
  // `item`: one of what lies in the cell; -1: the cell itself.
  DrawnCell(DrawnOwner& owner, int cell, int item) : owner_(owner), cell_(cell), item_(item) {}

  bool isValid() const override;
  QObject* object() const override { return nullptr; }
  QWindow* window() const override;
  QAccessibleInterface* parent() const override;
  QAccessibleInterface* child(int index) const override;
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override;
  int indexOfChild(const QAccessibleInterface* child) const override;
  QString text(QAccessible::Text kind) const override;
  void setText(QAccessible::Text, const QString&) override {}
  QRect rect() const override;
  QAccessible::Role role() const override;
  QAccessible::State state() const override;
  void* interface_cast(QAccessible::InterfaceType type) override;

  QStringList actionNames() const override { return {pressAction()}; }
  void doAction(const QString& name) override;
  QStringList keyBindingsForAction(const QString&) const override { return {}; }

  bool isSelected() const override { return state().selected; }
  QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
  QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
  int columnIndex() const override;
  int rowIndex() const override;
  int columnExtent() const override { return 1; }
  int rowExtent() const override { return 1; }
  QAccessibleInterface* table() const override { return parent(); }

  int cell() const { return cell_; }
  int item() const { return item_; }

 private:
  DrawnOwner& owner_;
  int cell_, item_;
};

// The accessible side of a widget that draws cells. They are asked for when a screen reader looks.
class DrawnOwner : public QAccessibleWidget {
 public:
  DrawnOwner(QWidget* widget, QAccessible::Role role) : QAccessibleWidget(widget, role) {}
  ~DrawnOwner() override;

  virtual const AccessibleGrid& grid() const = 0;
  virtual std::vector<Text> items(int cell) const = 0;
  virtual void press(int cell) = 0;
  virtual QRect on_screen(const Rect& place) const = 0;
  virtual QAccessible::Role cell_role(int cell) const = 0;

  QWidget* drawn_on() const { return widget(); }
  int cell_count() const { return static_cast<int>(grid().cells.size()); }
  const AccessibleCell* cell(int index) const;
  int selected_cell() const;  // -1: none
  DrawnCell* interface_of(int cell, int item) const;

  int childCount() const override { return cell_count(); }
  QAccessibleInterface* child(int index) const override;
  int indexOfChild(const QAccessibleInterface* child) const override;
  QAccessibleInterface* childAt(int x, int y) const override;
  QAccessibleInterface* focusChild() const override;

 private:
  mutable std::map<std::pair<int, int>, QAccessible::Id> made_;
};

}  // namespace orvello
