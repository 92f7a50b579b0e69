#include "hosts/qt/qt_message_boxes.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/colored_label.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/flat_button.h"
#include "hosts/qt/modal_layer.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_text.h"
#include "hosts/shared/box_choices.h"
#include "resources/strings.h"

namespace orvello {
namespace {

constexpr int kBoxWidth = 216;  // fits a 240-pixel screen with a margin
constexpr int kWideBoxWidth = 300;

class BoxSheet : public Guarded<QWidget> {
 public:
  BoxSheet(QWidget* parent, const Density& density, TextView text, TextView caption, BoxIcon icon)
      : Guarded(parent),
        density_(density),
        color_(icon == BoxIcon::error     ? &LookColors::error
               : icon == BoxIcon::warning ? &LookColors::warning
                                          : &LookColors::accent) {
    setFont(widget_font(density));
    setAutoFillBackground(true);
    setAccessibleName(to_qt(caption));
    setObjectName(QStringLiteral("box"));
    const int grid = density.scaled(kGrid);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(3 * grid, 3 * grid, 3 * grid, 2 * grid);
    column->setSpacing(2 * grid);
    heading_ = new ColoredLabel(to_qt(caption), this, density);
    heading_->setFont(widget_font(density, kHeadingSize, true));
    heading_->set_color(density.colors->*color_);
    column->addWidget(heading_);
    message_ = new ColoredLabel(to_qt(text), this, density);
    message_->setAlignment(Qt::AlignTop | turned_alignment(Qt::AlignLeft));
    // A text longer than the screen scrolls.
    scroll_ = new QScrollArea;
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setWidgetResizable(true);
    scroll_->setFocusPolicy(Qt::NoFocus);
    scroll_->setWidget(message_);
    column->addWidget(scroll_, 1);
    row_ = new QHBoxLayout;
    row_->addStretch();
    column->addLayout(row_);
  }

  QPushButton* add_button(const QString& text) {
    auto* button = new FlatButton(text, this, density_);
    // Three of them fit the narrowest box.
    button->setMinimumSize(density_.scaled(56), density_.scaled(kTouchHeight));
    row_->addWidget(button);
    return button;
  }

  QSize wanted(int width) const {
    const QMargins margins = layout()->contentsMargins();
    const int inside = width - margins.left() - margins.right();
    const int heading = layout()->itemAt(0)->widget()->heightForWidth(inside);
    const int height = margins.top() + margins.bottom() + heading +
                       message_->heightForWidth(inside) + row_->sizeHint().height() +
                       2 * layout()->spacing();
    return {width, height};
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(0, 0, width(), std::max(2, density_.scaled(3)),
                     qt_color(density_.colors->*color_));
  }
  void changeEvent(QEvent* event) override {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && heading_)
      heading_->set_color(density_.colors->*color_);
  }

 private:
  const Density& density_;
  Color LookColors::*color_;
  ColoredLabel* heading_ = nullptr;
  ColoredLabel* message_;
  QScrollArea* scroll_;
  QHBoxLayout* row_;
};

QRect centered(QSize size, QSize whole) {
  size = size.boundedTo(whole);
  return {(whole.width() - size.width()) / 2, (whole.height() - size.height()) / 2, size.width(),
          size.height()};
}

}  // namespace

BoxAnswer QtMessageBoxes::show(TextView text, TextView caption, BoxIcon icon, BoxButtons buttons,
                               bool) {
  if (answer) return answer(text, caption, icon, buttons);
  const Density& density = window_.form_density();
  const QPointer<ModalLayer> layer = new ModalLayer(window_);
  auto* sheet = new BoxSheet(layer, density, text, caption, icon);
  const auto choices = box_choices(buttons);
  BoxAnswer given = choices.back().answer;
  QPushButton* pressed_by_return = nullptr;
  for (const BoxChoice& choice : choices) {
    QPushButton* button = sheet->add_button(to_qt(load_string(choice.text, *this)));
    on_signal(button, &QPushButton::clicked, layer, [&given, layer, choice] {
      given = choice.answer;
      layer->end();
    });
    if (!pressed_by_return || may_lose(buttons)) pressed_by_return = button;
  }
  pressed_by_return->setDefault(true);
  pressed_by_return->setFocus();
  layer->setWindowTitle(to_qt(caption));
  layer->close_wanted = [layer] { layer->end(); };
  layer->accept_wanted = [pressed_by_return] { pressed_by_return->click(); };
  const auto wanted = [&](int room) {
    const int most = density.scaled(kWideBoxWidth);
    return sheet->wanted(std::min(most, std::max(density.scaled(kBoxWidth), room * 3 / 4)));
  };
  layer->place_sheet = [&](QSize whole) {
    if (layer->isWindow()) return QRect(QPoint(0, 0), whole);
    return centered(wanted(whole.width()), whole);
  };
  layer->run(*sheet, wanted(density.scaled(kWideBoxWidth)));
  if (layer) {
    layer->uncover();
    layer->deleteLater();
  }
  return given;
}

// A desktop has one sound.
void QtMessageBoxes::beep(Beep) { QApplication::beep(); }

}  // namespace orvello
