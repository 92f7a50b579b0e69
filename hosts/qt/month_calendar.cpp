#include "hosts/qt/month_calendar.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <algorithm>

#include "hosts/qt/direction.h"
#include "hosts/qt/qt_accessible.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_text.h"

namespace orvello {
namespace {

constexpr int kYearWidth = 44, kNamesHeight = 18;  // design units
constexpr int kNotch = 120;
const QDate kFirst(1601, 1, 1), kLast(9999, 12, 31);

QDate date_of(const MonthDayYear& date) { return {date.year, date.month, date.day}; }

// What the arrows do, as lines run.
QDate arrow_target(int arrow, const QDate& date) {
  switch (arrow) {
    case 0:
      return date.addMonths(-1);
    case 1:
      return date.addMonths(1);
    case 2:
      return date.addYears(-1);
    default:
      return date.addYears(1);
  }
}

}  // namespace

MonthCalendar::MonthCalendar(QWidget* parent, const Density& density, const LocaleData& locale)
    : Guarded(parent), density_(density), locale_(locale), date_(2000, 1, 1) {
  setFocusPolicy(Qt::StrongFocus);
}

void MonthCalendar::set_date(const MonthDayYear& date) {
  const QDate wanted = date_of(date);
  if (wanted.isValid()) date_ = within(wanted);
  update();
}

void MonthCalendar::set_calendar(const MonthDayYear& today, bool monday_first) {
  today_ = date_of(today);
  monday_first_ = monday_first;
  update();
}

QDate MonthCalendar::grid_start() const {
  const QDate first(date_.year(), date_.month(), 1);
  const int column = monday_first_ ? first.dayOfWeek() - 1 : first.dayOfWeek() % 7;
  return first.addDays(-column);
}

QRect MonthCalendar::day_names() const {
  return {0, density_.scaled(kTouchHeight), width(), density_.scaled(kNamesHeight)};
}

QRect MonthCalendar::place_of(int part) const {
  const int side = density_.scaled(kTouchHeight), year = density_.scaled(kYearWidth);
  if (part < kArrows) {
    const int x[kArrows] = {0, width() - 3 * side - year, width() - 2 * side - year,
                            width() - side};
    return turned(QRect(x[part], 0, side, side), width());
  }
  const int column = (part - kArrows) % kColumns, row = (part - kArrows) / kColumns;
  const int top = day_names().bottom() + 1, rest = height() - top;
  const int x = width() * column / kColumns, y = top + rest * row / kRows;
  return turned(
      QRect(x, y, width() * (column + 1) / kColumns - x, top + rest * (row + 1) / kRows - y),
      width());
}

int MonthCalendar::part_at(QPoint point) const {
  for (int part = 0; part < kArrows + kColumns * kRows; ++part)
    if (place_of(part).contains(point)) return part;
  return -1;
}

void MonthCalendar::move_to(const QDate& date) {
  if (!date.isValid() || within(date) == date_) return;
  date_ = within(date);
  update();
  tell_accessible_change(*this);
  if (moved) moved();
}

void MonthCalendar::tap(int part) {
  if (part < 0) return;
  if (part < kArrows) return move_to(arrow_target(part, date_));
  const QPointer<MonthCalendar> alive(this);
  move_to(grid_start().addDays(part - kArrows));
  if (alive && chosen) chosen();
}

void MonthCalendar::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  pressed_ = part_at(event->position().toPoint());
  update();
}

void MonthCalendar::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

void MonthCalendar::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const int part = part_at(event->position().toPoint());
  const bool same = part == pressed_;
  pressed_ = -1;
  update();
  if (same) tap(part);
}

void MonthCalendar::wheelEvent(QWheelEvent* event) {
  event->accept();
  if (const int notches = event->angleDelta().y() / kNotch) move_to(date_.addMonths(-notches));
}

QDate MonthCalendar::within(const QDate& date) { return std::clamp(date, kFirst, kLast); }

QDate MonthCalendar::after_key(const QDate& date, const QKeyEvent& event) {
  const bool far = event.modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
  const auto to = [](const QDate& wanted) { return wanted.isValid() ? within(wanted) : QDate(); };
  switch (turned_key(event.key())) {
    case Qt::Key_Left:
      return to(date.addDays(-1));
    case Qt::Key_Right:
      return to(date.addDays(1));
    case Qt::Key_Up:
      return to(date.addDays(-kColumns));
    case Qt::Key_Down:
      return to(date.addDays(kColumns));
    case Qt::Key_PageUp:
      return to(arrow_target(far ? 2 : 0, date));
    case Qt::Key_PageDown:
      return to(arrow_target(far ? 3 : 1, date));
    case Qt::Key_Home:
      return QDate(date.year(), date.month(), 1);
    case Qt::Key_End:
      return QDate(date.year(), date.month(), date.daysInMonth());
    default:
      return {};
  }
}

void MonthCalendar::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
    if (chosen) chosen();
    return;
  }
  const QDate date = after_key(date_, *event);
  if (!date.isValid()) return QWidget::keyPressEvent(event);
  move_to(date);
}

void MonthCalendar::focusInEvent(QFocusEvent*) {
  update();
  tell_accessible_change(*this);
}
void MonthCalendar::focusOutEvent(QFocusEvent*) { update(); }

void MonthCalendar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), qt_color(density_.colors->field));
  paint_heading(painter);
  const QDate start = grid_start();
  painter.setFont(widget_font(density_, kTextSize));
  for (int i = 0; i < kColumns * kRows; ++i) paint_day(painter, kArrows + i, start.addDays(i));
}

WeekNames MonthCalendar::names_within(const QFontMetrics& metrics) const {
  const int room = width() / kColumns - density_.scaled(2);
  const std::vector<WeekNames> choices = abbreviated_day_names(locale_);
  const auto fits = [&](const WeekNames& names) {
    return std::all_of(names.begin(), names.end(), [&](const Text& name) {
      return metrics.horizontalAdvance(to_qt(name)) <= room;
    });
  };
  const auto found = std::find_if(choices.begin(), choices.end(), fits);
  return found == choices.end() ? choices.back() : *found;
}

void MonthCalendar::paint_heading(QPainter& painter) const {
  const LookColors& look = *density_.colors;
  for (int arrow = 0; arrow < kArrows; ++arrow) paint_arrow(painter, arrow);
  painter.setPen(qt_color(look.accent));
  painter.setFont(widget_font(density_, kHeadingSize, true));
  const auto between = [&](int back, int on) {
    QRect a = place_of(back), b = place_of(on);
    if (is_right_to_left()) std::swap(a, b);
    return QRect(a.right() + 1, a.top(), b.left() - a.right() - 1, a.height());
  };
  const auto month = static_cast<std::size_t>(date_.month() - 1);
  const QRect room = between(0, 1);
  QString name = to_qt(locale_.month_names[month]);
  if (painter.fontMetrics().horizontalAdvance(name) > room.width())
    name = to_qt(locale_.short_month_names[month]);
  painter.drawText(room, Qt::AlignCenter, name);
  painter.drawText(between(2, 3), Qt::AlignCenter, QString::number(date_.year()));
  const QRect names = day_names();
  painter.setPen(qt_color(look.dim_text));
  painter.setFont(widget_font(density_, kTextSize - 1));
  const QDate start = grid_start();
  const WeekNames shown = names_within(painter.fontMetrics());
  for (int column = 0; column < kColumns; ++column) {
    QRect box = place_of(kArrows + column);
    box.setTop(names.top());
    box.setHeight(names.height());
    const auto day = static_cast<std::size_t>(start.addDays(column).dayOfWeek() - 1);
    painter.drawText(box, Qt::AlignCenter, to_qt(shown[day]));
  }
  painter.fillRect(0, names.bottom(), width(), std::max(1, density_.scaled(1)),
                   qt_color(look.line));
}

void MonthCalendar::paint_arrow(QPainter& painter, int arrow) const {
  const LookColors& look = *density_.colors;
  const QRectF place = place_of(arrow);
  const bool forward = (arrow % 2 == 1) != is_right_to_left();
  if (pressed_ == arrow) painter.fillRect(place, qt_color(look.accent_tint));
  const double half = density_.scaled(4), depth = half * (forward ? 1 : -1);
  const QPointF middle = place.center();
  QPainterPath path(middle - QPointF(depth / 2, half));
  path.lineTo(middle + QPointF(depth / 2, 0));
  path.lineTo(middle + QPointF(-depth / 2, half));
  const double thick = std::max(1.5, density_.scaled(2) * 1.0);
  painter.strokePath(
      path, QPen(qt_color(look.accent), thick, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void MonthCalendar::paint_day(QPainter& painter, int part, const QDate& day) const {
  const LookColors& look = *density_.colors;
  const double line = std::max(1, density_.scaled(1));
  const QRectF box = QRectF(place_of(part)).adjusted(line, line, -line, -line);
  const double round = density_.scaled(3);
  const bool selected = day == date_;
  if (selected || pressed_ == part) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(qt_color(selected ? look.accent : look.accent_tint));
    painter.drawRoundedRect(box, round, round);
  }
  painter.setBrush(Qt::NoBrush);
  const QRectF edge = box.adjusted(2 * line, 2 * line, -2 * line, -2 * line);
  if (day == today_) {
    painter.setPen(QPen(qt_color(selected ? look.accent_text : look.accent), 1.5 * line));
    painter.drawRoundedRect(edge, round, round);
  } else if (selected && hasFocus()) {
    painter.setPen(QPen(qt_color(look.accent_text), line, Qt::DotLine));
    painter.drawRoundedRect(edge, round, round);
  }
  const bool other = day.month() != date_.month();
  painter.setPen(qt_color(selected ? look.accent_text : other ? look.dim_text : look.text));
  painter.drawText(place_of(part), Qt::AlignCenter, QString::number(day.day()));
}

std::vector<AccessibleCell> MonthCalendar::accessible_parts() const {
  static constexpr const char16_t* kNames[kArrows] = {u"Previous month", u"Next month",
                                                      u"Previous year", u"Next year"};
  std::vector<AccessibleCell> parts;
  const auto add = [&](int part, Text name, bool selected) {
    const QRect place = place_of(part);
    const int x = density_.device(place.x()), y = density_.device(place.y());
    parts.push_back({std::move(name),
                     {x, y, density_.device(place.x() + place.width()) - x,
                      density_.device(place.y() + place.height()) - y},
                     selected});
  };
  for (int arrow = 0; arrow < kArrows; ++arrow) add(arrow, kNames[arrow], false);
  const QDate start = grid_start();
  for (int i = 0; i < kColumns * kRows; ++i) {
    const QDate day = start.addDays(i);
    const Text& month = locale_.genitive_month_names[static_cast<std::size_t>(day.month() - 1)];
    const QString name =
        QStringLiteral("%1 %2 %3").arg(day.day()).arg(to_qt(month)).arg(day.year());
    add(kArrows + i, from_qt(name), day == date_);
  }
  return parts;
}

void MonthCalendar::choose_part(int part) { tap(part); }

}  // namespace orvello
