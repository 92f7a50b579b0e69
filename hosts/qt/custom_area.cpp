#include "hosts/qt/custom_area.h"

#include <QEvent>
#include <QPainter>
#include <QWheelEvent>

#include "draw/mirrored.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/qt_accessible.h"
#include "hosts/qt/qt_surface.h"

namespace orvello {

CustomArea::CustomArea(QWidget* parent, const Density& density, int control,
                       ControlInput::Report report)
    : Guarded(parent),
      density_(density),
      control_(control),
      report_(std::move(report)),
      input_(*this, *this, density, control, report_) {
  setFocusPolicy(Qt::StrongFocus);
}

void CustomArea::set_parts(const std::vector<AccessibleCell>& parts) {
  parts_ = parts;
  tell_accessible_change(*this);
}

std::vector<AccessibleCell> CustomArea::accessible_parts() const {
  std::vector<AccessibleCell> parts = parts_;
  if (is_right_to_left())
    for (AccessibleCell& part : parts) part.place = mirrored(part.place, density_.device(width()));
  return parts;
}

void CustomArea::choose_part(int part) {
  const auto at = static_cast<std::size_t>(part);
  if (part >= 0 && at < parts_.size()) input_.tap(parts_[at].place.center());
}

bool CustomArea::take_event(QEvent* event) {
  // The toolkit gives the focus for a mouse's press alone, and before the press is told.
  const bool pressed = event->type() == QEvent::TabletPress || event->type() == QEvent::TouchBegin;
  if (pressed) setFocus(Qt::MouseFocusReason);
  return input_.take_pointer(*event) || QWidget::event(event);
}

void CustomArea::paintEvent(QPaintEvent*) {
  const Size size{density_.device(width()), density_.device(height())};
  QtSurface surface(size, see_through_ ? QtSurface::Ground::clear : QtSurface::Ground::white);
  report_({DialogEvent::Kind::paint, control_, &surface.canvas(), size});
  surface.publish();
  QPainter painter(this);
  surface.paint(painter, size, density_.ratio);
}

void CustomArea::keyPressEvent(QKeyEvent* event) {
  if (!input_.take_key(*event)) QWidget::keyPressEvent(event);
}

// A form around it may scroll as well.
void CustomArea::wheelEvent(QWheelEvent* event) {
  event->ignore();
  input_.take_wheel(*event);
}

void CustomArea::focusInEvent(QFocusEvent*) {
  update();
  tell_accessible_change(*this);
}

void CustomArea::focusOutEvent(QFocusEvent*) { update(); }

}  // namespace orvello
