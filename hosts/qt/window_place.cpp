#include "hosts/qt/window_place.h"

#include "draw/mirrored.h"
#include "hosts/qt/direction.h"

#include <QWidget>

namespace orvello {

Rect place_in_window(const QWidget& widget, const QRect& inside, const Density& density) {
  // The main window's points start at its content; another window has no such place.
  const QWidget* window = widget.window();
  const auto* content = window->findChild<QWidget*>(QStringLiteral("content"));
  const QPoint origin = content ? content->mapTo(window, QPoint(0, 0)) : QPoint(0, 0);
  const QPoint at = widget.mapTo(window, inside.topLeft()) - origin;
  const int x = density.device(at.x()), y = density.device(at.y());
  const Rect place{x, y, density.device(at.x() + inside.width()) - x,
                   density.device(at.y() + inside.height()) - y};
  const int whole = density.device((content ? content : window)->width());
  return is_right_to_left() ? mirrored(place, whole) : place;
}

}  // namespace orvello
