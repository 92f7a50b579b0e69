#include "hosts/qt/qt_menu_bar.h"

#include <QPainter>
#include <QPointer>
#include <algorithm>

#include "hosts/qt/bar_button.h"
#include "hosts/qt/callbacks.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_text.h"
#include "ports/messages.h"

namespace orvello {
namespace {

constexpr int kMostTextPadding = 10, kLeastTextPadding = 2;  // either side, design units
constexpr int kWidestImage = 36;
constexpr int kSmallestText = 8;
constexpr int kWidestName = 120;  // of what is highlighted, design units

}  // namespace

// Texts from the left, then the images, which share one width. What does not fit first loses
// padding and then text size; nothing is ever cut.
class QtMenuBar::Bar : public Guarded<QWidget> {
 public:
  Bar(QWidget* parent, const Density& density, const std::vector<BarButton*>& buttons)
      : Guarded(parent), density_(density), buttons_(buttons) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setObjectName(QStringLiteral("menubar"));
  }

  // Where texts as large as the desktop's do not fit, they have the usual size.
  void lay_out() {
    Density usual = density_;
    usual.text = std::min(1.0, usual.text);
    if (!lay_out_in(density_)) lay_out_in(usual);
  }

 protected:
  void resizeEvent(QResizeEvent*) override { lay_out(); }
  void paintEvent(QPaintEvent*) override {
    const LookColors& look = *density_.colors;
    QPainter painter(this);
    painter.fillRect(rect(), qt_color(look.ground));
    painter.fillRect(0, 0, width(), std::max(1, density_.scaled(1)), qt_color(look.line));
  }

 private:
  bool lay_out_in(const Density& density) {
    int images = 0, texts = 0;
    for (const BarButton* button : buttons_)
      if (button) ++(button->shows_image() ? images : texts);
    const int touch = density.scaled(kTouchHeight);
    int padding = density.scaled(kMostTextPadding);
    double size = kTextSize;
    int text_width = fit_texts(density, size);
    const auto rest = [&] { return width() - text_width - images * touch; };
    const int least = density.scaled(kLeastTextPadding);
    while (rest() < 2 * texts * least && size > kSmallestText)
      text_width = fit_texts(density, size -= 0.5);
    if (texts) padding = std::clamp(rest() / (2 * texts), least, padding);
    const int left = rest() - 2 * texts * padding;
    const int most = std::max(touch, density.scaled(kWidestImage));
    const int image_width = images ? std::min(most, touch + std::max(0, left) / images) : 0;
    place(padding, image_width, images,
          std::max(0, rest() - 2 * texts * padding - images * (image_width - touch)));
    return left >= 0;
  }

  int fit_texts(const Density& density, double size) {
    const QFont font = widget_font(density, size);
    int sum = 0;
    for (BarButton* button : buttons_) {
      if (!button) continue;
      button->setFont(font);
      if (button->shows_image()) continue;
      sum += button->text_width();
    }
    return sum;
  }

  // A highlighted image's name takes of `left`, the room that nothing else needs.
  void place(int padding, int image_width, int images, int left) {
    const int line = std::max(1, density_.scaled(1));
    const auto name_width = [&](BarButton* button) {
      if (!button || !button->shows_image() || !button->is_highlighted()) return 0;
      const int wanted = button->text_width() + 2 * density_.scaled(kGrid);
      return std::min({left, density_.scaled(kWidestName), wanted});
    };
    int names = 0;
    for (BarButton* button : buttons_) names += name_width(button);
    int x = 0, image_x = width() - images * image_width - names;
    for (BarButton* button : buttons_) {
      if (!button) continue;
      int& at = button->shows_image() ? image_x : x;
      const int wide = button->shows_image() ? image_width + name_width(button)
                                             : button->text_width() + 2 * padding;
      button->setGeometry(turned(QRect(at, line, wide, height() - line), width()));
      at += wide;
    }
  }

  const Density& density_;
  const std::vector<BarButton*>& buttons_;
};

QtMenuBar::QtMenuBar(QtMainWindow& window) : window_(window) {
  window.on_look = [this] {
    density_ = window_.form_density();
    if (!bar_) return;
    take_height();
    bar_->lay_out();
    bar_->update();
  };
}

bool QtMenuBar::create(const MenuBarContent& content) {
  Shell* shell = window_.shell();
  if (!shell || bar_) return false;
  density_ = window_.form_density();
  bar_ = new Bar(shell, density_, buttons_);
  const QImage strip = content.strip.empty() ? QImage() : to_qt(content.strip);
  const int side = content.strip.height;
  for (const MenuBarButton& item : content.buttons) {
    if (item.kind == MenuBarButton::Kind::separator) {
      buttons_.push_back(nullptr);
      continue;
    }
    const bool has_image = item.image >= 0 && (item.image + 1) * side <= strip.width();
    QImage image = has_image ? strip.copy(item.image * side, 0, side, side) : QImage();
    auto* button = new BarButton(bar_, density_, item, std::move(image));
    buttons_.push_back(button);
    on_signal(button, &QAbstractButton::clicked, bar_, [this, button] {
      // Posted, as a command may destroy the bar and this button with it.
      const QPointer<QWidget> alive(bar_);
      const std::uint32_t command =
          button->has_menu() ? button->run_menu() : button->content().command;
      if (alive && command) window_.post({kMessageCommand, command, {}, 0});
    });
  }
  wanted_height_ = content.height / density_.unit() / density_.ratio;
  take_height();
  bar_->lay_out();
  return true;
}

void QtMenuBar::take_height() {
  const double device_unit = density_.unit() * density_.ratio;
  height_ = std::max(static_cast<int>(std::lround(wanted_height_ * device_unit)),
                     static_cast<int>(std::ceil(kTouchHeight * device_unit)));
  window_.shell()->set_bar(bar_, height_);
}

void QtMenuBar::destroy() {
  if (!bar_) return;
  if (Shell* shell = window_.shell()) {
    shell->set_bar(nullptr, 0);
    bar_->hide();
    bar_->deleteLater();
  }  // else the window has taken its widgets with it
  bar_ = nullptr;
  buttons_.clear();
  height_ = 0;
}

BarButton* QtMenuBar::button_of(std::uint32_t command) const {
  if (!window_.shell()) return nullptr;
  for (BarButton* button : buttons_)
    if (button && button->content().command == command) return button;
  return nullptr;
}

void QtMenuBar::set_button_text(int index, TextView text) {
  if (!window_.shell() || index < 0 || index >= static_cast<int>(buttons_.size())) return;
  BarButton* button = buttons_[static_cast<std::size_t>(index)];
  if (!button) return;
  button->set_caption(to_qt(text));
  bar_->lay_out();
}

void QtMenuBar::enable_button(std::uint32_t command, bool enabled) {
  if (BarButton* button = button_of(command)) button->setEnabled(enabled);
}

void QtMenuBar::check_button(std::uint32_t command, bool checked) {
  BarButton* button = button_of(command);
  if (!button) return;
  // Checkable only while checked, so that a tap does not turn the mark.
  button->setCheckable(checked);
  button->setChecked(checked);
  button->update();
}

void QtMenuBar::highlight_button(std::uint32_t command, bool highlighted, TextView hint) {
  BarButton* button = button_of(command);
  if (!button) return;
  button->highlight(highlighted, to_qt(hint));
  bar_->lay_out();
}

void QtMenuBar::set_menu(std::uint32_t command, const std::vector<MenuItem>& items) {
  if (BarButton* button = button_of(command)) button->set_menu(items);
}

}  // namespace orvello
