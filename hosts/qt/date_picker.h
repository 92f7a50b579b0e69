// A date in a field that drops a calendar down, which is made only then.
#pragma once

#include <QDate>
#include <QPointer>
#include <QWidget>
#include <functional>

#include "calendar/dates.h"
#include "calendar/locale_data.h"
#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"
#include "hosts/qt/drop_field.h"

namespace orvello {

class DropPanel;
class MonthCalendar;

class DatePicker : public Guarded<QWidget>, public DropField {
 public:
  DatePicker(QWidget* parent, const Density& density, const LocaleData& locale);

  // What the person does: another date by a key, and a date taken from the calendar.
  std::function<void()> changed, taken;

  MonthDayYear date() const { return {date_.month(), date_.day(), date_.year()}; }
  void set_date(const MonthDayYear& date);
  void set_calendar(const MonthDayYear& today, bool monday_first);
  void set_picture(TextView picture);
  QString shown() const override;
  void open() override;
  bool is_open() const override;
  MonthCalendar* calendar() const { return calendar_; }  // while it is open

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QFont font_within(int width) const;
  void take();
  void show_date(const QDate& date);

  const Density& density_;
  const LocaleData& locale_;
  QDate date_;
  MonthDayYear today_{};
  bool monday_first_ = false;
  Text picture_;
  QPointer<DropPanel> panel_;
  QPointer<MonthCalendar> calendar_;
};

}  // namespace orvello
