// A list of one selected row, or of several.
#pragma once

#include <QListWidget>
#include <functional>
#include <vector>

#include "base/text.h"
#include "hosts/qt/flat_field.h"

namespace orvello {

class RowList : public FlatArea<QListWidget> {
 public:
  RowList(QWidget* parent, const Density& density, bool several);

  // What the person does: other rows selected, and a row tapped or taken with Return.
  std::function<void()> changed, taken;

  void set_rows(const std::vector<Text>& rows);
  std::vector<Text> rows() const;
  std::vector<int> selected() const;
  void select(const std::vector<int>& rows);
  void show_row(int row);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  bool setting_ = false;
};

}  // namespace orvello
