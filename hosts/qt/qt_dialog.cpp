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
namespace {

// Rows as high as a finger needs, or higher where their text wraps.
class RowDelegate : public QStyledItemDelegate {
 public:
  RowDelegate(int least, QObject* parent) : QStyledItemDelegate(parent), least_(least) {}
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return QStyledItemDelegate::sizeHint(option, index).expandedTo({0, least_});
  }

 private:
  int least_;
};

}  // namespace

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
  const QPointer<FormWidget> form = form_;
  procedure_.handle(*this, event);
  // A modal one outlives its procedure's handling: it ends now unless it has been ended.
  if (person_closes && form && closed && !is_closed_) close(0);
}

QListWidget* QtDialog::list(int control) const { return qobject_cast<QListWidget*>(find(control)); }

Text QtDialog::text(int control) const {
  QWidget* widget = find(control);
  if (auto* edit = qobject_cast<QLineEdit*>(widget)) return from_qt(edit->text());
  if (auto* edit = qobject_cast<QPlainTextEdit*>(widget)) return from_qt(edit->toPlainText());
  if (auto* label = qobject_cast<QLabel*>(widget)) return from_qt(label->text());
  if (auto* button = qobject_cast<QAbstractButton*>(widget))
    return from_qt(button->text().replace(QStringLiteral("&&"), QStringLiteral("&")));
  if (QListWidget* rows = list(control); rows && rows->currentItem())
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

void QtDialog::focus(int control) {
  if (QWidget* widget = find(control)) give_focus(*widget);
}

void QtDialog::set_rows(int control, const std::vector<Text>& rows) {
  QListWidget* widget = list(control);
  if (!widget) return;
  const QSignalBlocker silence(widget);
  widget->clear();
  if (!dynamic_cast<RowDelegate*>(widget->itemDelegate()))
    widget->setItemDelegate(new RowDelegate(density_.scaled(kTouchHeight), widget));
  for (const Text& row : rows) new QListWidgetItem(to_qt(row), widget);
}

int QtDialog::selected_row(int control) const {
  const QListWidget* widget = list(control);
  return widget && widget->currentItem() ? widget->currentRow() : -1;
}

void QtDialog::select_row(int control, int row) {
  QListWidget* widget = list(control);
  if (!widget) return;
  const QSignalBlocker silence(widget);
  widget->setCurrentRow(row);
}

ReportList* QtDialog::report(int control) {
  auto* view = dynamic_cast<ReportView*>(find(control));
  if (!view) return nullptr;
  std::unique_ptr<QtReport>& report = reports_[control];
  if (!report) report = std::make_unique<QtReport>(view);
  return report.get();
}

void QtDialog::set_calendar(int control, const MonthDayYear& date, const MonthDayYear& today,
                            bool monday_first) {
  if (auto* calendar = dynamic_cast<MonthCalendar*>(find(control)))
    calendar->set(date, today, monday_first);
}

MonthDayYear QtDialog::calendar_date(int control) const {
  const auto* calendar = dynamic_cast<const MonthCalendar*>(find(control));
  return calendar ? calendar->date() : MonthDayYear();
}

void QtDialog::set_parts(int control, const std::vector<AccessibleCell>& parts) {
  if (auto* area = dynamic_cast<CustomArea*>(find(control))) area->set_parts(parts);
}

std::uint32_t QtDialog::track_menu(const std::vector<MenuItem>& items, int control, Point at) {
  const QWidget* widget = find(control);
  if (!widget) return 0;
  const QWidget* window = widget->window();
  const QPoint point =
      widget->mapTo(window, QPoint(density_.logical(at.x), density_.logical(at.y)));
  // Inside the window as far as it fits.
  const auto place = [&](QSize size) {
    const int x = std::max(0, std::min(point.x(), window->width() - size.width()));
    const int y = std::max(0, std::min(point.y(), window->height() - size.height()));
    return window->mapToGlobal(QPoint(x, y));
  };
  return run_touch_menu(density_, items, place);
}

void QtDialog::start_timer(int id, int milliseconds) {
  if (!form_) return;
  QTimer*& timer = timers_[id];
  if (!timer) {
    timer = new QTimer;
    QObject::connect(timer, &QTimer::timeout, form_, [this, id] {
      handle({DialogEvent::Kind::timer, id, nullptr, {}});
    });
  }
  timer->start(milliseconds);
}

void QtDialog::stop_timer(int id) {
  const auto found = timers_.find(id);
  if (found != timers_.end()) found->second->stop();
}

void QtDialog::close(int result) {
  is_closed_ = true;
  result_ = result;
  for (auto& [id, timer] : timers_) timer->stop();
  if (closed) closed(result);
}

}  // namespace orvello
