// The widgets of one dialog template: a title strip when it is modal, and the controls.
#pragma once

#include <QScrollArea>
#include <QWidget>
#include <functional>
#include <map>
#include <vector>

#include "calendar/locale_data.h"
#include "hosts/qt/density.h"
#include "ports/dialog.h"

class QButtonGroup;

namespace orvello {

class FormWidget : public QWidget {
 public:
  // `locale` outlives the form. Without a title it is edge to edge; a popup has a border.
  FormWidget(QWidget* parent, const Density& density, const LocaleData& locale,
             const DialogTemplate& dialog, bool titled);

  std::function<void(const DialogEvent&)> report;  // what the person does
  std::function<void()> painted;

  QWidget* control(int id) const;
  const ControlTemplate* control_template(int id) const;
  int title_height() const;
  int border() const;  // around the controls
  void show_control(int id, bool shown);
  void set_step(int step);
  void set_place(int id, const Rect& place);
  void press_default();
  // Gives every control its place, also while nothing is shown yet.
  void lay_out();
  // Tells the control that covers a popup where on the screen the pointer was let go.
  void release_at(QPointF global);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  QWidget* make(const ControlTemplate& control);
  QWidget* make_edit(const ControlTemplate& control);
  QWidget* make_list(int id);
  QWidget* make_radio(const ControlTemplate& control);
  QWidget* make_calendar(int id);
  void make_close_button();
  void show_if_seen(std::size_t index);
  void tell(DialogEvent::Kind kind, int control) { report({kind, control, nullptr, {}}); }

  const Density& density_;
  const LocaleData& locale_;
  DialogTemplate template_;
  bool titled_;
  int step_ = 0;
  std::vector<bool> shown_;
  QScrollArea* scroll_;
  QWidget* body_;
  QWidget* close_button_ = nullptr;
  std::map<int, QButtonGroup*> radio_groups_;
  std::vector<QWidget*> widgets_;
};

}  // namespace orvello
