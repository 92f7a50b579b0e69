#include "hosts/qt/date_picker.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

#include "calendar/date_pictures.h"
#include "hosts/qt/choice_box.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/drop_panel.h"
#include "hosts/qt/flat_field.h"
#include "hosts/qt/month_calendar.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_text.h"

namespace orvello {
namespace {

constexpr int kCalendarWidth = 224, kCalendarHeight = 208;  // design units

}  // namespace

DatePicker::DatePicker(QWidget* parent, const Density& density, const LocaleData& locale)
    : Guarded(parent),
      density_(density),
      locale_(locale),
      date_(2000, 1, 1),
      picture_(DatePickerPicture(locale)) {
  setFocusPolicy(Qt::StrongFocus);
}

void DatePicker::show_date(const QDate& date) {
  date_ = date;
  if (QAccessible::isActive()) {
    QAccessibleValueChangeEvent event(this, shown());
    QAccessible::updateAccessibility(&event);
  }
  update();
}

void DatePicker::set_date(const MonthDayYear& date) {
  const QDate wanted(date.year, date.month, date.day);
  if (wanted.isValid()) show_date(MonthCalendar::within(wanted));
  if (is_open()) panel_->close_soon();
}

void DatePicker::set_calendar(const MonthDayYear& today, bool monday_first) {
  today_ = today;
  monday_first_ = monday_first;
}

void DatePicker::set_picture(TextView picture) {
  picture_ = picture.empty() ? DatePickerPicture(locale_) : Text(picture);
  show_date(date_);
}

QString DatePicker::shown() const {
  SystemTime time;
  time.year = date_.year();
  time.month = date_.month();
  time.day = date_.day();
  time.day_of_week = date_.dayOfWeek() % 7;
  return to_qt(FormatDatePicture(picture_, time, locale_));
}

// Some languages abbreviate no months; the year at the end must not be what is left out.
QFont DatePicker::font_within(int width) const {
  QFont fitting = font();
  const int least = fitting.pixelSize() * 2 / 3;
  while (fitting.pixelSize() > least && QFontMetrics(fitting).horizontalAdvance(shown()) > width)
    fitting.setPixelSize(fitting.pixelSize() - 1);
  return fitting;
}

bool DatePicker::is_open() const { return panel_ && !panel_->isHidden(); }

void DatePicker::open() {
  if (is_open() || !isVisible() || !isEnabled()) return;
  auto* calendar = new MonthCalendar(nullptr, density_, locale_);
  calendar->setAccessibleName(accessibleName());
  calendar->set_calendar(today_, monday_first_);
  calendar->set_date(date());
  calendar->show_focus(true);
  calendar->chosen = [this] { take(); };
  panel_ = new DropPanel(*this, density_, calendar);
  calendar_ = calendar;
  panel_->closed = [this] { update(); };
  const QSize size(density_.scaled(kCalendarWidth), density_.scaled(kCalendarHeight));
  panel_->open({std::max(size.width(), std::min(width(), size.width() * 3 / 2)), size.height()},
               size.height());
  update();
}

void DatePicker::take() {
  const MonthDayYear chosen = calendar_->date();
  panel_->close_soon();
  const bool other = chosen != date();
  if (other) show_date({chosen.year, chosen.month, chosen.day});
  if (other && changed) changed();
  if (taken) taken();
}

void DatePicker::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  const bool vertical = key == Qt::Key_Down || key == Qt::Key_Up;
  const bool drops = key == Qt::Key_F4 || (vertical && event->modifiers() & Qt::AltModifier);
  if (is_open()) {
    if (drops || key == Qt::Key_Escape)
      panel_->close_soon();
    else
      QCoreApplication::sendEvent(calendar_, event);
    return;
  }
  if (drops || key == Qt::Key_Space) return open();
  const QDate date = MonthCalendar::after_key(date_, *event);
  if (!date.isValid()) return QWidget::keyPressEvent(event);
  if (date == date_) return;
  show_date(date);
  if (changed) changed();
}

void DatePicker::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) open();
}

void DatePicker::focusInEvent(QFocusEvent*) { update(); }
void DatePicker::focusOutEvent(QFocusEvent*) { update(); }

void DatePicker::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::EnabledChange) update();
}

void DatePicker::paintEvent(QPaintEvent*) {
  const LookColors& look = *density_.colors;
  paint_field_ground(*this, density_);
  const int arrow = std::min(density_.scaled(kTouchHeight), width() / 2);
  {
    QPainter painter(this);
    const QRect room = turned(rect().adjusted(density_.scaled(1.5 * kGrid), 0, -arrow, 0), width());
    painter.setFont(font_within(room.width()));
    painter.setPen(qt_color(isEnabled() ? look.text : look.dim_text));
    draw_directed(painter, room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                  painter.fontMetrics().elidedText(shown(), Qt::ElideRight, room.width()));
  }
  paint_drop_arrow(*this, density_, arrow);
  paint_field_edge(*this, density_, hasFocus());
}

}  // namespace orvello
