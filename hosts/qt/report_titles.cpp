#include "hosts/qt/report_titles.h"

#include <QPainter>
#include <algorithm>

#include "hosts/qt/direction.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_text.h"
#include "hosts/qt/report_model.h"

namespace orvello {

int ReportTitles::wanted_height() const {
  const auto& columns = model_.content().columns;
  const bool any = std::any_of(columns.begin(), columns.end(),
                               [](const ReportColumn& column) { return !column.title.empty(); });
  if (!any) return 0;
  return density_.logical(QFontMetrics(model_.font(true)).height()) + density_.scaled(kGrid);
}

void ReportTitles::scroll_to(int logical_left) {
  left_ = logical_left;
  update();
}

void ReportTitles::paintEvent(QPaintEvent*) {
  const LookColors& look = *density_.colors;
  QPainter painter(this);
  const int line = std::max(1, density_.scaled(1));
  painter.fillRect(rect(), qt_color(look.ground));
  painter.fillRect(0, height() - line, width(), line, qt_color(look.line));
  painter.scale(1 / density_.ratio, 1 / density_.ratio);
  painter.setFont(model_.font(true));
  painter.setPen(qt_color(look.dim_text));
  const int bottom = density_.device(height() - line);
  int x = density_.device(-left_);
  const auto& columns = model_.content().columns;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const QRect box(x, 0, model_.column_width(i), bottom);
    draw_cell_text(painter, to_qt(columns[i].title),
                   turned(box, density_.device(width()))
                       .adjusted(model_.content().padding, 0, -model_.content().padding, 0),
                   columns[i].align);
    x += box.width();
  }
}

}  // namespace orvello
