#include "hosts/qt/tab_strip.h"

#include <QAbstractButton>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>
#include <algorithm>

#include "hosts/qt/direction.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/sheet_tabs.h"

namespace orvello {

// As wide as a finger needs.
class StripArrow : public Guarded<QAbstractButton> {
 public:
  StripArrow(QWidget* parent, const Density& density, bool forward)
      : Guarded(parent), density_(density), forward_(forward) {
    setFocusPolicy(Qt::NoFocus);
    // It points to where the tabs go on, on a right-to-left screen the other way.
    setAccessibleName(forward != is_right_to_left() ? QStringLiteral("Next tabs")
                                                    : QStringLiteral("Previous tabs"));
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    const LookColors& look = *density_.colors;
    QPainter painter(this);
    painter.fillRect(rect(), qt_color(isDown() ? look.accent_tint : look.ground));
    const int line = std::max(1, density_.scaled(1));
    painter.fillRect(0, height() - line, width(), line, qt_color(look.line));
    painter.setRenderHint(QPainter::Antialiasing);
    const double half = density_.scaled(4), depth = half / 2 * (forward_ ? 1 : -1);
    const QPointF middle = QRectF(rect()).center();
    QPainterPath path(middle - QPointF(depth, half));
    path.lineTo(middle + QPointF(depth, 0));
    path.lineTo(middle + QPointF(-depth, half));
    painter.strokePath(path, QPen(qt_color(isEnabled() ? look.accent : look.line),
                                  std::max(1.5, density_.scaled(2) * 1.0), Qt::SolidLine,
                                  Qt::RoundCap, Qt::RoundJoin));
  }

 private:
  const Density& density_;
  bool forward_;
};

TabStrip::TabStrip(QWidget* parent, const Density& density)
    : Guarded(parent),
      density_(density),
      window_(new QWidget(this)),
      tabs_(new SheetTabs(window_, density)),
      arrows_{new StripArrow(this, density, false), new StripArrow(this, density, true)} {
  for (const int by : {-1, 1})
    on_signal(arrows_[by > 0], &QAbstractButton::clicked, this,
              [this, by] { move_to(left_ + by * window_->width() * 2 / 3); });
}

QSize TabStrip::sizeHint() const { return tabs_->sizeHint(); }

QRect TabStrip::window_rect() const {
  const int arrow = density_.scaled(kTouchHeight);
  return tabs_->sizeHint().width() > width() ? rect().adjusted(arrow, 0, -arrow, 0) : rect();
}

int TabStrip::most() const { return std::max(0, tabs_->sizeHint().width() - window_->width()); }

void TabStrip::move_to(int left) {
  left_ = std::clamp(left, 0, most());
  tabs_->setGeometry(-left_, 0, std::max(window_->width(), tabs_->sizeHint().width()), height());
  arrows_[0]->setEnabled(left_ > 0);
  arrows_[1]->setEnabled(left_ < most());
}

void TabStrip::keep_in_sight() {
  const int arrow = density_.scaled(kTouchHeight);
  window_->setGeometry(window_rect());
  const bool moves = most() > 0;
  for (StripArrow* one : arrows_) one->setVisible(moves);
  arrows_[0]->setGeometry(0, 0, arrow, height());
  arrows_[1]->setGeometry(width() - arrow, 0, arrow, height());
  move_to(left_);
  const QRect shown = tabs_->tabRect(tabs_->shown());
  if (shown.left() < left_) move_to(shown.left());
  if (shown.right() >= left_ + window_->width()) move_to(shown.right() + 1 - window_->width());
}

void TabStrip::resizeEvent(QResizeEvent*) { keep_in_sight(); }

void TabStrip::wheelEvent(QWheelEvent* event) {
  event->accept();
  move_to(left_ - event->angleDelta().y() / 2);
}

}  // namespace orvello
