#include "hosts/qt/form_widget.h"
#include "draw/form_layout.h"

#include <QButtonGroup>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QToolButton>

#include "hosts/qt/custom_area.h"
#include "hosts/qt/flat_button.h"
#include "hosts/qt/flat_choice.h"
#include "hosts/qt/month_calendar.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_report.h"
#include "hosts/qt/qt_text.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Event = DialogEvent::Kind;

QString label_text(const Text& text) { return to_qt(text).replace(u'&', QStringLiteral("&&")); }

}  // namespace

FormWidget::FormWidget(QWidget* parent, const Density& density, const LocaleData& locale,
                       const DialogTemplate& dialog, bool titled)
    : QWidget(parent),
      density_(density),
      locale_(locale),
      template_(dialog),
      titled_(titled),
      scroll_(new QScrollArea(this)),
      body_(new QWidget) {
  apply_form_look(*this, density);
  setAutoFillBackground(true);
  setAttribute(Qt::WA_NoMousePropagation);  // nothing of what happens here is for what lies below
  setAccessibleName(to_qt(dialog.title));
  setObjectName(QStringLiteral("dialog%1").arg(dialog.id));
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setFocusPolicy(Qt::NoFocus);
  scroll_->setWidget(body_);
  flatten_scroll_bar(*scroll_->verticalScrollBar(), density);
  for (const ControlTemplate& control : template_.controls) {
    QWidget* widget = make(control);
    widget->setObjectName(QStringLiteral("control%1").arg(control.id));
    // A screen reader has no other name for what has no text of its own.
    const bool drawn = control.kind == Kind::custom || control.kind == Kind::report ||
                       control.kind == Kind::month_calendar;
    if (drawn) widget->setAccessibleName(to_qt(control.text.empty() ? dialog.title : control.text));
    // In the template's order, also where a kind of widget would choose otherwise.
    if (!widgets_.empty()) setTabOrder(widgets_.back(), widget);
    widgets_.push_back(widget);
    shown_.push_back(true);
    if (control.step != 0) widget->hide();
  }
  if (titled_) make_close_button();
  for (QWidget* widget : findChildren<QWidget*>()) widget->installEventFilter(this);
}

void FormWidget::make_close_button() {
  auto* button = new QToolButton(this);
  button->setText(QStringLiteral("\u00D7"));
  button->setFont(widget_font(density_, 18));
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::NoFocus);
  button->setAccessibleName(QStringLiteral("Close"));
  button->setObjectName(QStringLiteral("close"));
  connect(button, &QToolButton::clicked, this, [this] { tell(Event::close, 0); });
  close_button_ = button;
}

QWidget* FormWidget::make(const ControlTemplate& control) {
  const int id = control.id;
  const auto command = [this, id] { tell(Event::command, id); };
  const auto tell_event = [this](const DialogEvent& event) { report(event); };
  switch (control.kind) {
    case Kind::button:
    case Kind::default_button: {
      auto* button = new FlatButton(label_text(control.text), body_, density_);
      button->setDefault(control.kind == Kind::default_button);
      if (button->isDefault()) button->setFont(widget_font(density_, kTextSize, true));
      connect(button, &QPushButton::clicked, this, command);
      return button;
    }
    case Kind::check_box: {
      auto* box = new FlatCheckBox(label_text(control.text), body_, density_);
      connect(box, &QCheckBox::clicked, this, command);
      return box;
    }
    case Kind::radio_button:
      return make_radio(control);
    case Kind::edit:
    case Kind::multi_line_edit:
      return make_edit(control);
    case Kind::list:
      return make_list(id);
    case Kind::report:
      return new ReportView(body_, density_, id, tell_event);
    case Kind::month_calendar:
      return make_calendar(id);
    case Kind::custom:
      return new CustomArea(body_, density_, id, tell_event);
    default:
      break;
  }
  auto* label = new QLabel(to_qt(control.text), body_);
  label->setTextFormat(Qt::PlainText);  // an appointment's text is never markup
  label->setWordWrap(true);
  return label;
}

QWidget* FormWidget::make_radio(const ControlTemplate& control) {
  auto* button = new FlatRadioButton(label_text(control.text), body_, density_);
  QButtonGroup*& group = radio_groups_[control.group];
  if (!group) group = new QButtonGroup(this);
  group->addButton(button);
  const int id = control.id;
  connect(button, &QRadioButton::clicked, this, [this, id] { tell(Event::command, id); });
  return button;
}

QWidget* FormWidget::make_calendar(int id) {
  auto* calendar = new MonthCalendar(body_, density_, locale_);
  calendar->moved = [this, id] { tell(Event::changed, id); };
  calendar->chosen = [this, id] { tell(Event::taken, id); };
  return calendar;
}

QWidget* FormWidget::make_edit(const ControlTemplate& control) {
  const int id = control.id;
  if (control.kind == Kind::multi_line_edit) {
    auto* edit = new QPlainTextEdit(to_qt(control.text), body_);
    edit->setTabChangesFocus(true);
    flatten_scroll_bar(*edit->verticalScrollBar(), density_);
    connect(edit, &QPlainTextEdit::textChanged, this, [this, id] { tell(Event::changed, id); });
    return edit;
  }
  auto* edit = new QLineEdit(to_qt(control.text), body_);
  connect(edit, &QLineEdit::textEdited, this, [this, id] { tell(Event::changed, id); });
  return edit;
}

QWidget* FormWidget::make_list(int id) {
  auto* list = new QListWidget(body_);
  // Long rows wrap: a pen that scrolls in two directions is no help in reading them.
  list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list->setWordWrap(true);
  list->setTextElideMode(Qt::ElideNone);
  list->setResizeMode(QListView::Adjust);
  list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  flatten_scroll_bar(*list->verticalScrollBar(), density_);
  connect(list, &QListWidget::currentRowChanged, this, [this, id] { tell(Event::changed, id); });
  connect(list, &QListWidget::itemClicked, this, [this, id] { tell(Event::taken, id); });
  return list;
}

QWidget* FormWidget::control(int id) const {
  for (std::size_t i = 0; i < widgets_.size(); ++i)
    if (template_.controls[i].id == id) return widgets_[i];
  return nullptr;
}

const ControlTemplate* FormWidget::control_template(int id) const {
  for (const ControlTemplate& control : template_.controls)
    if (control.id == id) return &control;
  return nullptr;
}

void FormWidget::show_if_seen(std::size_t index) {
  const int step = template_.controls[index].step;
  widgets_[index]->setVisible(shown_[index] && (step == 0 || step == step_));
}

void FormWidget::show_control(int id, bool shown) {
  for (std::size_t i = 0; i < widgets_.size(); ++i) {
    if (template_.controls[i].id != id) continue;
    shown_[i] = shown;
    show_if_seen(i);
  }
}

void FormWidget::set_step(int step) {
  step_ = step;
  for (std::size_t i = 0; i < widgets_.size(); ++i)
    if (template_.controls[i].step != 0) show_if_seen(i);
}

void FormWidget::set_place(int id, const Rect& place) {
  for (ControlTemplate& control : template_.controls)
    if (control.id == id) control.place = place;
  lay_out();
}

int FormWidget::title_height() const { return titled_ ? density_.scaled(kTouchHeight + 2) : 0; }

void FormWidget::press_default() {
  for (QWidget* widget : widgets_)
    if (auto* button = qobject_cast<QPushButton*>(widget);
        button && button->isDefault() && button->isEnabled())
      return button->click();
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
                   density_.scaled(kScrollBarWidth));
  body_->resize(layout.body.width, layout.body.height);
  for (std::size_t i = 0; i < widgets_.size(); ++i) {
    widgets_[i]->setGeometry(to_qt(layout.places[i]));
    if (auto* report = dynamic_cast<ReportView*>(widgets_[i])) report->lay_out_unseen();
  }
  if (close_button_) close_button_->setGeometry(width() - top, 0, top, top - 1);
}

void FormWidget::release_at(QPointF global) {
  for (QWidget* widget : widgets_) {
    auto* area = dynamic_cast<CustomArea*>(widget);
    if (area && area->rect().size() == body_->size()) return area->input().release_at(global);
  }
}

void FormWidget::resizeEvent(QResizeEvent*) { lay_out(); }

void FormWidget::paintEvent(QPaintEvent*) {
  if (titled_) {
    QPainter painter(this);
    const int line = std::max(1, density_.scaled(1)), top = title_height();
    painter.fillRect(0, 0, width(), top, Qt::white);
    painter.fillRect(0, top - line, width(), line, QColor(kAccent));
    painter.setFont(widget_font(density_, kHeadingSize, true));
    painter.setPen(QColor(kAccent));
    const QRect room(density_.scaled(2 * kGrid), 0, width() - top - density_.scaled(2 * kGrid),
                     top - line);
    const QString title =
        painter.fontMetrics().elidedText(to_qt(template_.title), Qt::ElideRight, room.width());
    painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft, title);
  }
  if (const int edge = border()) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(kDimInk));
    painter.fillRect(rect().adjusted(edge, edge, -edge, -edge), QColor(kBarGround));
  }
}

bool FormWidget::eventFilter(QObject* object, QEvent* event) {
  auto* widget = static_cast<QWidget*>(object);
  // Controls that cover the form leave nothing of it to paint.
  if (event->type() == QEvent::Paint && painted) painted();
  for (std::size_t i = 0; i < widgets_.size(); ++i) {
    if (widgets_[i] != widget) continue;
    const ControlTemplate& control = template_.controls[i];
    // A menu gives the focus back.
    if (event->type() == QEvent::FocusOut &&
        static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason)
      tell(Event::focus_lost, control.id);
    if (event->type() == QEvent::KeyPress && control.kind == Kind::list) {
      const int key = static_cast<QKeyEvent*>(event)->key();
      if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        tell(Event::taken, control.id);
        return true;
      }
    }
    break;
  }
  return false;
}

}  // namespace orvello
