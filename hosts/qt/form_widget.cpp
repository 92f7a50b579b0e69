#include "hosts/qt/form_widget.h"

#include <QButtonGroup>
#include <QCoreApplication>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QResizeEvent>
#include <QScrollBar>
#include <utility>

#include "draw/form_layout.h"
#include "hosts/qt/callbacks.h"
#include "hosts/qt/custom_area.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_report.h"
#include "hosts/qt/qt_text.h"
#include "hosts/qt/title_strip.h"
#include "hosts/shared/spoken_names.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Event = DialogEvent::Kind;

}  // namespace

FormWidget::FormWidget(QWidget* parent, const Density& density, const LocaleData& locale,
                       const DialogTemplate& dialog, bool titled)
    : Guarded(parent),
      density_(density),
      locale_(locale),
      template_(dialog),
      titled_(titled),
      scroll_(new QScrollArea(this)),
      body_(new QWidget),
      focus_([this](Event kind, int control) { tell(kind, control); }) {
  setFont(widget_font(density));
  setAutoFillBackground(true);
  setAttribute(Qt::WA_NoMousePropagation);  // nothing of what happens here is for what lies below
  setAccessibleName(to_qt(dialog.title));
  setObjectName(QStringLiteral("dialog%1").arg(dialog.id));
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setFocusPolicy(Qt::NoFocus);
  scroll_->setWidget(body_);
  flatten_scroll_bar(*scroll_->verticalScrollBar(), density);
  flatten_scroll_bar(*scroll_->horizontalScrollBar(), density);
  Text label;
  for (const ControlTemplate& control : template_.controls) {
    make(control);
    name(control, *made_.back().widget, label);
    pass_label(control, label);
  }
  if (!template_.outline.empty()) see_through();
  focus_.watch(*body_, 0);
  if (titled_) {
    close_button_ = make_close_button(*this, density);
    on_signal(close_button_, &QAbstractButton::clicked, this, [this] {
      if (close_wanted) close_wanted();
    });
  }
  for (QWidget* widget : findChildren<QWidget*>()) widget->installEventFilter(this);
  keep_seen();
}

// Of a form in an outline only what is drawn is seen.
void FormWidget::see_through() {
  for (QWidget* ground : {static_cast<QWidget*>(this), scroll_->viewport(), body_})
    ground->setAutoFillBackground(false);
  for (const Made& made : made_)
    if (auto* area = dynamic_cast<CustomArea*>(made.widget)) area->see_through();
}

void FormWidget::make(const ControlTemplate& control) {
  const FormSink sink{[this](Event kind, int id) { tell(kind, id); },
                      [this](const DialogEvent& event) { report(event); }};
  QWidget* widget = make_control(body_, density_, locale_, control, sink);
  widget->setObjectName(QStringLiteral("control%1").arg(control.id));
  if (auto* radio = qobject_cast<QRadioButton*>(widget)) {
    QButtonGroup*& group = radio_groups_[control.group];
    if (!group) group = new QButtonGroup(this);
    group->addButton(radio);
  }
  if (takes_focus(control.kind)) focus_.watch(*widget, control.id);
  // In the template's order, also where a kind of widget would choose otherwise.
  if (!made_.empty()) setTabOrder(made_.back().widget, widget);
  made_.push_back({widget, !control.hidden, true});
}

void FormWidget::name(const ControlTemplate& control, QWidget& widget, const Text& label) {
  if (!is_named_by_label(control.kind)) return;
  const QString name = to_qt(spoken_name(control, label, template_.title));
  widget.setAccessibleName(name);
  if (control.kind == Kind::line) widget.setAccessibleDescription(to_qt(control.text));
  if (widget.focusProxy()) widget.focusProxy()->setAccessibleName(name);
}

void FormWidget::tell(Event kind, int id) {
  if (kind == Event::changed) focus_.leave_changed(id, is_choice(id));
  if (kind == Event::taken) {
    // A slider that was let go where it stood.
    const bool slider = kind_of(id) == Kind::slider;
    if (slider && !focus_.is_left_changed(id)) return;
    focus_.leave_changed(id, false);
  }
  report({kind, id, nullptr, {}});
}

int FormWidget::index_of(int id) const {
  for (std::size_t i = 0; i < made_.size(); ++i)
    if (template_.controls[i].id == id) return static_cast<int>(i);
  return -1;
}

QWidget* FormWidget::control(int id) const {
  const int at = index_of(id);
  return at < 0 ? nullptr : made_[static_cast<std::size_t>(at)].widget;
}

QString FormWidget::title() const { return to_qt(template_.title); }

void FormWidget::set_title(const QString& title) {
  template_.title = from_qt(title);
  setAccessibleName(title);
  update();
}

int FormWidget::title_height() const { return titled_ ? density_.scaled(kTouchHeight + 2) : 0; }

bool FormWidget::press_default() {
  for (const Made& made : made_)
    if (auto* button = qobject_cast<QPushButton*>(made.widget);
        button && button->isDefault() && button->isEnabled() && button->isVisible()) {
      button->click();
      return true;
    }
  return false;
}

// A popup's edge; one with an outline of its own draws that by itself.
int FormWidget::border() const {
  return template_.popup && template_.outline.empty() ? std::max(1, density_.scaled(1)) : 0;
}

void FormWidget::lay_out() {
  const int top = title_height(), edge = border();
  const QRect inside(edge, top + edge, width() - 2 * edge, height() - top - 2 * edge);
  scroll_->setGeometry(inside);
  if (!isVisible()) {
    // The toolkit would leave it to the moment when it is shown.
    QResizeEvent event(scroll_->size(), scroll_->size());
    QCoreApplication::sendEvent(scroll_, &event);
  }
  const FormLayout layout =
      lay_out_form(template_, density_.unit(), {inside.width(), std::max(0, inside.height())},
                   density_.scaled(kScrollBarWidth), step_);
  body_->resize(layout.body.width, layout.body.height);
  for (std::size_t i = 0; i < made_.size(); ++i) {
    made_[i].widget->setGeometry(turned(to_qt(layout.places[i]), layout.body.width));
    if (auto* rows = dynamic_cast<ReportView*>(made_[i].widget)) rows->lay_out_unseen();
  }
  if (close_button_)
    close_button_->setGeometry(turned(QRect(width() - top, 0, top, top - 1), width()));
}

void FormWidget::set_seen(bool seen) {
  if (seen == std::exchange(seen_, seen)) return;
  if (seen) return outline_.isEmpty() ? clearMask() : setMask(outline_);
  outline_ = mask();
  setMask(QRegion(-1, -1, 1, 1));  // an empty one would be none
}

void FormWidget::set_place(int id, const Rect& place) {
  const int at = index_of(id);
  if (at < 0) return;
  template_.controls[static_cast<std::size_t>(at)].place = place;
  lay_out();
}

void FormWidget::release_at(QPointF global) {
  for (const Made& made : made_) {
    auto* area = dynamic_cast<CustomArea*>(made.widget);
    if (area && area->rect().size() == body_->size()) return area->input().release_at(global);
  }
}

void FormWidget::resizeEvent(QResizeEvent*) { lay_out(); }

void FormWidget::paintEvent(QPaintEvent*) {
  const LookColors& look = *density_.colors;
  QPainter painter(this);
  if (titled_) paint_title(painter, QRect(0, 0, width(), title_height()), density_, title());
  if (const int edge = border()) {
    painter.fillRect(rect(), qt_color(look.dim_text));
    painter.fillRect(rect().adjusted(edge, edge, -edge, -edge), qt_color(look.ground));
  }
}

bool FormWidget::filter_event(QObject*, QEvent* event) {
  // Controls that cover the form leave nothing of it to paint.
  if (event->type() == QEvent::Paint && painted) painted();
  return false;
}

}  // namespace orvello
