// The port's view of single controls. They outlive their widgets.
#pragma once

#include <QListWidget>
#include <QPointer>

#include "hosts/qt/density.h"
#include "hosts/qt/month_calendar.h"
#include "ports/controls.h"

namespace orvello {

class QtList : public ListControl {
 public:
  QtList(QListWidget* list, const Density& density);
  void set_rows(const std::vector<Text>& rows) override;
  std::vector<Text> rows() const override;
  std::vector<int> selected() const override;
  void select(const std::vector<int>& rows) override;
  void show_row(int row) override;

 private:
  QPointer<QListWidget> list_;
};

class QtCalendar : public DateControl {
 public:
  explicit QtCalendar(MonthCalendar* calendar) : calendar_(calendar) {}
  MonthDayYear date() const override { return calendar_ ? calendar_->date() : MonthDayYear(); }
  void set_date(const MonthDayYear& date) override {
    if (calendar_) calendar_->set_date(date);
  }
  void set_calendar(const MonthDayYear& today, bool monday_first) override {
    if (calendar_) calendar_->set_calendar(today, monday_first);
  }
  void set_picture(TextView) override {}  // its heading names the month

 private:
  QPointer<MonthCalendar> calendar_;
};

class QtDrawn : public DrawnControl {
 public:
  QtDrawn(QWidget* widget, const Density& density) : widget_(widget), density_(density) {}
  void invalidate() override {
    if (widget_) widget_->update();
  }
  void set_image(const Image& image) override;
  void set_parts(const std::vector<AccessibleCell>& parts) override;
  std::uint32_t track_menu(const std::vector<MenuItem>& items, Point at) override;

 private:
  QPointer<QWidget> widget_;
  const Density& density_;
};

}  // namespace orvello
