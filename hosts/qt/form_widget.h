// The widgets of one dialog template: a title strip when it is modal, and the controls.
#pragma once

#include <QScrollArea>
#include <QWidget>
#include <functional>
#include <vector>

#include "hosts/qt/density.h"
#include "ports/dialogs.h"

namespace orvello {

class FormWidget : public QWidget {
 public:
  FormWidget(QWidget* parent, const Density& density, const DialogTemplate& dialog, bool titled);

  std::function<void(const DialogEvent&)> report;  // what the person does
  std::function<void()> painted;

  QWidget* control(int id) const;
  const ControlTemplate* control_template(int id) const;
  int title_height() const;
  void press_default();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  QWidget* make(const ControlTemplate& control);
  QWidget* make_edit(const ControlTemplate& control);
  QWidget* make_list(int id);
  void make_close_button();
  void tell(DialogEvent::Kind kind, int control) { report({kind, control, nullptr, {}}); }

  const Density& density_;
  DialogTemplate template_;
  bool titled_;
  QScrollArea* scroll_;
  QWidget* body_;
  QWidget* close_button_ = nullptr;
  std::vector<QWidget*> widgets_;
};

}  // namespace orvello
