#include "hosts/qt/form_widget.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QToolButton>

#include "hosts/qt/flat_button.h"
#include "hosts/qt/form_layout.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_surface.h"
#include "hosts/qt/qt_text.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Event = DialogEvent::Kind;

constexpr int kSeveralLines = 34;  // an edit this high has several lines

// A control that the program draws.
class CustomArea : public QWidget {
 public:
  CustomArea(QWidget* parent, const Density& density, std::function<void(Canvas&, Size)> paint)
      : QWidget(parent), density_(density), paint_(std::move(paint)) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    const Size size{density_.device(width()), density_.device(height())};
    QtSurface surface(size);
    paint_(surface.canvas(), size);
    surface.publish();
    QPainter painter(this);
    surface.paint(painter, size, density_.ratio);
  }

 private:
  const Density& density_;
  std::function<void(Canvas&, Size)> paint_;
};

QString label_text(const Text& text) { return to_qt(text).replace(u'&', QStringLiteral("&&")); }

}  // namespace

FormWidget::FormWidget(QWidget* parent, const Density& density, const DialogTemplate& dialog,
                       bool titled)
    : QWidget(parent),
      density_(density),
      template_(dialog),
      titled_(titled),
      scroll_(new QScrollArea(this)),
      body_(new QWidget) {
  apply_form_look(*this, density);
  setAutoFillBackground(true);
  setAccessibleName(to_qt(dialog.title));
  setObjectName(QStringLiteral("dialog%1").arg(dialog.id));
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setFocusPolicy(Qt::NoFocus);
  scroll_->setWidget(body_);
  for (const ControlTemplate& control : template_.controls) {
    QWidget* widget = make(control);
    widget->setObjectName(QStringLiteral("control%1").arg(control.id));
    widget->installEventFilter(this);
    // In the template's order, also where a kind of widget would choose otherwise.
    if (!widgets_.empty()) setTabOrder(widgets_.back(), widget);
    widgets_.push_back(widget);
  }
  if (titled_) make_close_button();
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
      auto* box = new QCheckBox(label_text(control.text), body_);
      connect(box, &QCheckBox::clicked, this, command);
      return box;
    }
    case Kind::radio_button: {
      auto* button = new QRadioButton(label_text(control.text), body_);
      connect(button, &QRadioButton::clicked, this, command);
      return button;
    }
    case Kind::edit:
      return make_edit(control);
    case Kind::list:
      return make_list(id);
    case Kind::custom:
      return new CustomArea(body_, density_, [this, id](Canvas& canvas, Size size) {
        report({Event::paint, id, &canvas, size});
      });
    case Kind::report:
    case Kind::month_calendar:
    case Kind::label:
      break;
  }
  auto* label = new QLabel(to_qt(control.text), body_);
  label->setTextFormat(Qt::PlainText);  // an appointment's text is never markup
  label->setWordWrap(true);
  return label;
}

QWidget* FormWidget::make_edit(const ControlTemplate& control) {
  const int id = control.id;
  if (control.place.height >= kSeveralLines) {
    auto* edit = new QPlainTextEdit(to_qt(control.text), body_);
    edit->setTabChangesFocus(true);
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
  connect(list, &QListWidget::currentRowChanged, this, [this, id] { tell(Event::changed, id); });
  connect(list, &QListWidget::itemClicked, this, [this, id] { tell(Event::command, id); });
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

int FormWidget::title_height() const { return titled_ ? density_.scaled(kTouchHeight + 2) : 0; }

void FormWidget::press_default() {
  for (QWidget* widget : widgets_)
    if (auto* button = qobject_cast<QPushButton*>(widget);
        button && button->isDefault() && button->isEnabled())
      return button->click();
}

void FormWidget::resizeEvent(QResizeEvent*) {
  const int top = title_height();
  scroll_->setGeometry(0, top, width(), height() - top);
  const FormLayout layout =
      lay_out_form(template_, density_.unit(), {width(), std::max(0, height() - top)});
  body_->resize(layout.body.width, layout.body.height);
  for (std::size_t i = 0; i < widgets_.size(); ++i)
    widgets_[i]->setGeometry(to_qt(layout.places[i]));
  if (close_button_) close_button_->setGeometry(width() - top, 0, top, top - 1);
}

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
  if (painted) painted();
}

bool FormWidget::eventFilter(QObject* object, QEvent* event) {
  auto* widget = static_cast<QWidget*>(object);
  for (std::size_t i = 0; i < widgets_.size(); ++i) {
    if (widgets_[i] != widget) continue;
    const ControlTemplate& control = template_.controls[i];
    if (event->type() == QEvent::FocusOut) tell(Event::focus_lost, control.id);
    if (event->type() == QEvent::KeyPress && control.kind == Kind::list) {
      const int key = static_cast<QKeyEvent*>(event)->key();
      if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        tell(Event::command, control.id);
        return true;
      }
    }
    break;
  }
  return false;
}

}  // namespace orvello
