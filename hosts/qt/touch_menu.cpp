#include "hosts/qt/touch_menu.h"

#include <QMenu>
#include <QWidget>
#include <algorithm>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_text.h"

namespace orvello {
namespace {

QAction* first_enabled(const QMenu& menu) {
  const QList<QAction*> rows = menu.actions();
  const auto found = std::find_if(rows.begin(), rows.end(), [](const QAction* row) {
    return row->isEnabled() && !row->isSeparator();
  });
  return found == rows.end() ? nullptr : *found;
}

}  // namespace

std::uint32_t run_touch_menu(const Density& on, const std::vector<MenuItem>& items,
                             const std::function<QPoint(QSize)>& place, bool by_key) {
  const Density density = on.grown();
  QMenu menu;  // without a parent, which a command of another source could destroy meanwhile
  menu.setPalette(look_palette(*density.colors));
  menu.setFont(widget_font(density));
  const int missing = density.scaled(kTouchHeight) - menu.fontMetrics().height();
  const QString sheet = QStringLiteral(
      "QMenu::item{padding:%1px %2px %1px %3px}"
      // A sheet with items forgets the palette's own mark of the one that keys stand on.
      "QMenu::item:selected{background:%6;color:%7}"
      "QMenu::indicator{width:%4px;height:%4px;left:%5px}");
  menu.setStyleSheet(sheet.arg(std::max(density.scaled(kGrid), (missing + 1) / 2))
                         .arg(density.scaled(3 * kGrid))
                         .arg(density.scaled(18))
                         .arg(density.scaled(12))
                         .arg(density.scaled(3))
                         .arg(qt_color(density.colors->accent).name())
                         .arg(qt_color(density.colors->accent_text).name()));
  for (const MenuItem& item : items) {
    if (item.command == 0) {
      menu.addSeparator();
      continue;
    }
    const QString text = to_qt(item.text).replace(u'&', QStringLiteral("&&"));
    QAction* action = menu.addAction(kept_direction(text));
    action->setEnabled(item.enabled);
    action->setCheckable(item.checked);
    action->setChecked(item.checked);
    action->setData(item.command);
  }
  // Once it stands: it is shown without a row.
  if (by_key) later(&menu, [&menu] { menu.setActiveAction(first_enabled(menu)); });
  const QAction* chosen = menu.exec(place(menu.sizeHint()));
  return chosen ? chosen->data().toUInt() : 0;
}

std::uint32_t run_menu_at(const QWidget& widget, Point at, const Density& density,
                          const std::vector<MenuItem>& items) {
  const QWidget* window = widget.window();
  const QRect spot(density.logical(at.x), density.logical(at.y), 0, 0);
  const QPoint point = widget.mapTo(window, turned(spot, widget.width()).topLeft());
  return run_touch_menu(density, items, [&](QSize size) {
    const int left = point.x() - (is_right_to_left() ? size.width() : 0);
    const int x = std::max(0, std::min(left, window->width() - size.width()));
    const int y = std::max(0, std::min(point.y(), window->height() - size.height()));
    return window->mapToGlobal(QPoint(x, y));
  });
}

}  // namespace orvello
