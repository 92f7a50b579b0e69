// The widgets of one dialog template: a title strip when it is modal, and the controls.
#pragma once

#include <QRegion>
#include <QScrollArea>
#include <QWidget>
#include <functional>
#include <map>
#include <vector>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/form_controls.h"
#include "hosts/qt/form_focus.h"

class QAbstractButton;
class QButtonGroup;

namespace orvello {

class FormWidget : public Guarded<QWidget> {
 public:
  // `locale` outlives the form. Without a title it is edge to edge; a popup has a border.
  FormWidget(QWidget* parent, const Density& density, const LocaleData& locale,
             const DialogTemplate& dialog, bool titled);

  std::function<void(const DialogEvent&)> report;  // what the person does
  std::function<void()> close_wanted;              // by the title's button
  std::function<void()> painted;

  const DialogTemplate& shown_template() const { return template_; }
  QWidget* control(int id) const;
  QString title() const;
  void set_title(const QString& title);
  int title_height() const;
  int border() const;    // around the controls
  bool press_default();  // false: there is none to press
  void set_enabled(int id, bool enabled);
  void set_shown(int id, bool shown);
  void set_step(int step);
  // All of it. It is still there: whoever was pressed on it goes on telling of that.
  void set_seen(bool seen);
  void set_place(int id, const Rect& place);  // as in the template
  // Gives every control its place, also while nothing is shown yet.
  void lay_out();
  // Nothing for a control that cannot take it; 0: none has it.
  void focus(int id, Caret caret = Caret::unchanged);
  // It is seen from now on, with the focus where it was wanted; else, if it needs one, on the first
  // control.
  void come(bool needs_focus);
  void go() { focus_.go(); }
  // Tells the control that covers a popup where on the screen the pointer was let go.
  void release_at(QPointF global);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool filter_event(QObject* object, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  struct Made {
    QWidget* widget = nullptr;
    bool shown = true;
    bool enabled = true;
  };
  void make(const ControlTemplate& control);
  void see_through();
  void name(const ControlTemplate& control, QWidget& widget, const Text& label);
  void tell(DialogEvent::Kind kind, int control);
  int index_of(int id) const;  // -1: none
  ControlTemplate::Kind kind_of(int id) const;
  bool is_choice(int id) const;
  bool is_seen(std::size_t at) const;
  bool can_focus(std::size_t at) const;
  bool is_tab_stop(std::size_t at) const;
  int first_focus() const;
  void keep_seen();
  void bring_in_sight(QWidget& widget);

  const Density& density_;
  const LocaleData& locale_;
  DialogTemplate template_;
  bool titled_;
  bool seen_ = true;
  QRegion outline_;  // while it is not seen
  int step_ = 0;
  QScrollArea* scroll_;
  QWidget* body_;
  QAbstractButton* close_button_ = nullptr;
  std::map<int, QButtonGroup*> radio_groups_;
  std::vector<Made> made_;  // by position in the template
  FormFocus focus_;
  int left_ = -1;  // where the focus was before none had it
};

}  // namespace orvello
