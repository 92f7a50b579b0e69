#include "hosts/qt/qt_dialog.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <algorithm>

#include "hosts/qt/custom_area.h"
#include "hosts/qt/modal_layer.h"
#include "hosts/qt/month_calendar.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_text.h"
#include "hosts/qt/touch_menu.h"

namespace orvello {
QtDialog::QtDialog(FormWidget* form, const Density& density, DialogProcedure& procedure)
    : form_(form), density_(density), procedure_(procedure) {
  form->report = [this](const DialogEvent& event) { handle(event); };
}

QtDialog::~QtDialog() {
  for (auto& [id, timer] : timers_) timer->deleteLater();
  if (!form_) return;
  form_->report = [](const DialogEvent&) {};
  form_->hide();
  form_->deleteLater();  // this may be called from one of its events
}

void QtDialog::handle(const DialogEvent& event) {
  // What goes away loses its focus, too: nothing more is told then, but it may still be painted.
  if (closed && is_closed_ && event.kind != DialogEvent::Kind::paint) return;
  const bool person_closes = event.kind == DialogEvent::Kind::close;
  if (person_closes && !procedure_.may_close(*this)) return;
  const QPointer<FormWidget> form = form_;
  procedure_.handle(*this, event);
  // A modal one outlives its procedure's handling: it ends now unless it has been ended.
  if (person_closes && form && closed && !is_closed_) close(0);
}

Text QtDialog::text(int control) const {
  QWidget* widget = find(control);
  if (auto* edit = qobject_cast<QLineEdit*>(widget)) return from_qt(edit->text());
  if (auto* edit = qobject_cast<QPlainTextEdit*>(widget)) return from_qt(edit->toPlainText());
  if (auto* label = qobject_cast<QLabel*>(widget)) return from_qt(label->text());
  if (auto* button = qobject_cast<QAbstractButton*>(widget))
    return from_qt(button->text().replace(QStringLiteral("&&"), QStringLiteral("&")));
  if (auto* rows = qobject_cast<QListWidget*>(widget); rows && rows->currentItem())
    return from_qt(rows->currentItem()->text());
  return {};
}

void QtDialog::set_text(int control, TextView text) {
  QWidget* widget = find(control);
  const QSignalBlocker silence(widget);
  if (auto* edit = qobject_cast<QLineEdit*>(widget)) edit->setText(to_qt(text));
  if (auto* edit = qobject_cast<QPlainTextEdit*>(widget)) edit->setPlainText(to_qt(text));
  if (auto* label = qobject_cast<QLabel*>(widget)) label->setText(to_qt(text));
  if (auto* button = qobject_cast<QAbstractButton*>(widget))
    button->setText(to_qt(text).replace(u'&', QStringLiteral("&&")));
}

bool QtDialog::checked(int control) const {
  auto* button = qobject_cast<QAbstractButton*>(find(control));
  return button && button->isChecked();
}

void QtDialog::set_checked(int control, bool checked) {
  auto* button = qobject_cast<QAbstractButton*>(find(control));
  if (!button) return;
  const QSignalBlocker silence(button);
  // A row of radio buttons would keep its last one.
  QButtonGroup* row = button->group();
  if (row && !checked) row->setExclusive(false);
  button->setChecked(checked);
  if (row) row->setExclusive(true);
}

void QtDialog::focus(int control, Caret) {
  if (QWidget* widget = find(control)) give_focus(*widget);
}

void QtDialog::set_step(int step) {
  if (form_) form_->set_step(step);
}

Rect QtDialog::place(int control) const {
  const QWidget* widget = find(control);
  if (!widget || !widget->isVisible()) return {};
  const QPoint corner = widget->mapTo(widget->window(), QPoint(0, 0));
  return density_.device(QRect(corner, widget->size()));
}

void QtDialog::set_place(int control, const Rect& place) {
  if (form_) form_->set_place(control, place);
}

ListControl* QtDialog::list(int control) {
  auto* widget = qobject_cast<QListWidget*>(find(control));
  if (!widget) return nullptr;
  std::unique_ptr<QtList>& handle = lists_[control];
  if (!handle) handle = std::make_unique<QtList>(widget, density_);
  return handle.get();
}

DateControl* QtDialog::date(int control) {
  auto* widget = dynamic_cast<MonthCalendar*>(find(control));
  if (!widget) return nullptr;
  std::unique_ptr<QtCalendar>& handle = dates_[control];
  if (!handle) handle = std::make_unique<QtCalendar>(widget);
  return handle.get();
}

DrawnControl* QtDialog::drawn(int control) {
  QWidget* widget = find(control);
  if (!dynamic_cast<CustomArea*>(widget) && !dynamic_cast<ReportView*>(widget)) return nullptr;
  std::unique_ptr<QtDrawn>& handle = drawn_[control];
  if (!handle) handle = std::make_unique<QtDrawn>(widget, density_);
  return handle.get();
}

ReportList* QtDialog::report(int control) {
  auto* view = dynamic_cast<ReportView*>(find(control));
  if (!view) return nullptr;
  std::unique_ptr<QtReport>& report = reports_[control];
  if (!report) report = std::make_unique<QtReport>(view);
  return report.get();
}

void QtDialog::set_timer(int id, int milliseconds) {
  if (!form_) return;
  QTimer*& timer = timers_[id];
  if (milliseconds <= 0) {
    if (timer) timer->stop();
    return;
  }
  if (!timer) {
    timer = new QTimer;
    QObject::connect(timer, &QTimer::timeout, form_, [this, id] {
      handle({DialogEvent::Kind::timer, id, nullptr, {}});
    });
  }
  timer->start(milliseconds);
}

void QtDialog::close(int result) {
  is_closed_ = true;
  result_ = result;
  for (auto& [id, timer] : timers_) timer->stop();
  if (closed) closed(result);
}

}  // namespace orvello
