// A drop list, or a combo: a drop list with a text of its own. The list is made when it is dropped
// down.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <vector>

#include "base/text.h"
#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"
#include "hosts/qt/drop_field.h"

class QListWidget;

namespace orvello {

class DropPanel;
class FlatEdit;

class ChoiceBox : public Guarded<QWidget>, public DropField {
 public:
  ChoiceBox(QWidget* parent, const Density& density, bool editable, int limit);

  // What the person does: another row or text, and a row taken from the list.
  std::function<void()> changed, taken;

  void set_rows(const std::vector<Text>& rows);
  const std::vector<Text>& rows() const { return rows_; }
  int selected() const;  // of a combo: the first row that is equal to its text
  void select(int row);
  QString shown() const override;
  void open() override;
  bool is_open() const override;
  Text text() const;
  void set_text(TextView text);
  // Whether what the person did last was to type.
  bool is_typed() const { return typed_; }
  FlatEdit* edit() const { return edit_; }  // of a combo

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool filter_event(QObject* object, QEvent* event) override;

 private:
  int arrow_width() const;
  bool take_key(const QKeyEvent& event);
  bool take_open_key(int key);
  void step_to(int row);  // by a key, while it is closed
  bool find_row(const QString& typed);
  int row_of(TextView text) const;
  void take(int row);
  void tell_reader();

  const Density& density_;
  FlatEdit* edit_ = nullptr;
  std::vector<Text> rows_;
  int selected_ = -1;  // of a drop list
  bool typed_ = false;
  QPointer<DropPanel> panel_;
  QPointer<QListWidget> list_;
};

// The arrow at the right of what drops something down.
void paint_drop_arrow(QWidget& field, const Density& density, int width);

}  // namespace orvello
