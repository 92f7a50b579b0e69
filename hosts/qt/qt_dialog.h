// One dialog on the screen, as its procedure knows it.
#pragma once

#include <QPointer>
#include <QTimer>
#include <functional>
#include <map>
#include <memory>

#include "hosts/qt/form_widget.h"
#include "hosts/qt/qt_report.h"

class QListWidget;

namespace orvello {

class QtDialog : public Dialog {
 public:
  // The form belongs to its parent widget, and may go with it.
  QtDialog(FormWidget* form, const Density& density, DialogProcedure& procedure);
  ~QtDialog() override;

  std::function<void(int)> closed;
  bool is_closed() const { return is_closed_; }
  int result() const { return result_; }

  // The procedure may destroy this dialog: nothing of it is touched afterwards.
  void handle(const DialogEvent& event);

  Text text(int control) const override;
  void set_text(int control, TextView text) override;
  bool checked(int control) const override;
  void set_checked(int control, bool checked) override;
  void enable(int control, bool enabled) override {
    if (QWidget* widget = find(control)) widget->setEnabled(enabled);
  }
  void show(int control, bool shown) override {
    if (QWidget* widget = find(control)) widget->setVisible(shown);
  }
  void focus(int control) override;
  void set_rows(int control, const std::vector<Text>& rows) override;
  int selected_row(int control) const override;
  void select_row(int control, int row) override;
  void invalidate(int control) override {
    if (QWidget* widget = find(control)) widget->update();
  }
  ReportList* report(int control) override;
  void set_calendar(int control, const MonthDayYear& date, const MonthDayYear& today,
                    bool monday_first) override;
  MonthDayYear calendar_date(int control) const override;
  void set_parts(int control, const std::vector<AccessibleCell>& parts) override;
  std::uint32_t track_menu(const std::vector<MenuItem>& items, int control, Point at) override;
  void start_timer(int id, int milliseconds) override;
  void stop_timer(int id) override;
  void close(int result) override;

 private:
  QWidget* find(int control) const { return form_ ? form_->control(control) : nullptr; }
  QListWidget* list(int control) const;

  QPointer<FormWidget> form_;
  const Density& density_;
  DialogProcedure& procedure_;
  std::map<int, QTimer*> timers_;
  std::map<int, std::unique_ptr<QtReport>> reports_;
  bool is_closed_ = false;
  int result_ = 0;
};

}  // namespace orvello
