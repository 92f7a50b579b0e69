// A month to choose a day from: arrows for the month and the year, and its weeks.
#pragma once

#include <QDate>
#include <QWidget>
#include <functional>

#include "calendar/dates.h"
#include "calendar/locale_data.h"
#include "calendar/short_names.h"
#include "hosts/qt/accessible_parts.h"
#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"

namespace orvello {

class MonthCalendar : public Guarded<QWidget>, public AccessibleParts {
 public:
  MonthCalendar(QWidget* parent, const Density& density, const LocaleData& locale);

  std::function<void()> moved;   // the chosen day is another one
  std::function<void()> chosen;  // a day was tapped or taken with Return

  void set_date(const MonthDayYear& date);
  void set_calendar(const MonthDayYear& today, bool monday_first);
  // Draws the ring of the focus though a field has that, which hands its keys on.
  void show_focus(bool shown) { shows_focus_ = shown; }
  // Where a key leads from a date; no valid date for a key that leads nowhere.
  static QDate after_key(const QDate& date, const QKeyEvent& event);
  static QDate within(const QDate& date);  // the dates that can be chosen
  MonthDayYear date() const { return {date_.month(), date_.day(), date_.year()}; }

  const Density& parts_density() const override { return density_; }
  std::vector<AccessibleCell> accessible_parts() const override;
  void choose_part(int part) override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  // The places that can be tapped: four arrows, then the days from the grid's first one.
  static constexpr int kArrows = 4, kColumns = 7, kRows = 6;
  QRect place_of(int part) const;
  int part_at(QPoint point) const;
  QRect day_names() const;
  WeekNames names_within(const QFontMetrics& metrics) const;  // Monday first
  QDate grid_start() const;
  void tap(int part);
  void move_to(const QDate& date);
  void paint_heading(QPainter& painter) const;
  void paint_arrow(QPainter& painter, int arrow) const;
  void paint_day(QPainter& painter, int part, const QDate& day) const;

  const Density& density_;
  const LocaleData& locale_;
  QDate date_, today_;
  bool monday_first_ = false;
  bool shows_focus_ = false;
  int pressed_ = -1;
};

}  // namespace orvello
