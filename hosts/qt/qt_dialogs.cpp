#include "hosts/qt/qt_dialogs.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPointer>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include "hosts/qt/form_layout.h"
#include "hosts/qt/form_widget.h"
#include "hosts/qt/modal_layer.h"
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

class QtDialog : public Dialog {
 public:
  // The form belongs to its parent widget, and may go with it.
  QtDialog(FormWidget* form, const Density& density, DialogProcedure& procedure)
      : form_(form),
        density_(density),
        row_height_(density.scaled(kTouchHeight)),
        procedure_(procedure) {
    form->report = [this](const DialogEvent& event) { handle(event); };
  }
  ~QtDialog() override {
    for (auto& [id, timer] : timers_) timer->deleteLater();
    if (!form_) return;
    form_->report = [](const DialogEvent&) {};
    form_->hide();
    form_->deleteLater();  // this may be called from one of its events
  }

  std::function<void(int)> closed;
  bool is_closed() const { return is_closed_; }
  int result() const { return result_; }

  // The procedure may destroy this dialog: nothing of it is touched afterwards.
  void handle(const DialogEvent& event) {
    const bool person_closes = event.kind == DialogEvent::Kind::close;
    const QPointer<FormWidget> form = form_;
    procedure_.handle(*this, event);
    // A modal one outlives its procedure's handling: it ends now unless it has been ended.
    if (person_closes && form && closed && !is_closed_) close(0);
  }

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
  void focus(int control) override {
    if (QWidget* widget = find(control)) widget->setFocus(Qt::OtherFocusReason);
  }
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
  QListWidget* list(int control) const { return qobject_cast<QListWidget*>(find(control)); }

  QPointer<FormWidget> form_;
  const Density& density_;
  int row_height_;
  DialogProcedure& procedure_;
  std::map<int, QTimer*> timers_;
  bool is_closed_ = false;
  int result_ = 0;
};

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
  const QSignalBlocker silence(button);
  if (button) button->setChecked(checked);
}

void QtDialog::set_rows(int control, const std::vector<Text>& rows) {
  QListWidget* widget = list(control);
  if (!widget) return;
  const QSignalBlocker silence(widget);
  widget->clear();
  if (!dynamic_cast<RowDelegate*>(widget->itemDelegate()))
    widget->setItemDelegate(new RowDelegate(row_height_, widget));
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

ReportList* QtDialog::report(int) { return nullptr; }

void QtDialog::set_calendar(int, const MonthDayYear&, const MonthDayYear&, bool) {}

MonthDayYear QtDialog::calendar_date(int) const { return {}; }

void QtDialog::set_parts(int, const std::vector<AccessibleCell>&) {}

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

}  // namespace

int QtDialogs::run_modal(const DialogTemplate& dialog, DialogProcedure& procedure) {
  const Density& density = window_.density();
  const QPointer<ModalLayer> layer = new ModalLayer(window_);
  auto* form = new FormWidget(layer, density, dialog, true);
  const Size design = design_size(dialog);
  layer->place_sheet = [&](QSize whole) {
    if (layer->isWindow()) return QRect(QPoint(0, 0), whole);
    return to_qt(
        sheet_place(dialog, density.unit(), form->title_height(), {whole.width(), whole.height()}));
  };
  QtDialog controls(form, density, procedure);
  controls.closed = [layer](int) {
    if (layer) layer->end();
  };
  layer->close_wanted = [&] { controls.handle({DialogEvent::Kind::close, 0, nullptr, {}}); };
  layer->accept_wanted = [form] { form->press_default(); };
  controls.handle({DialogEvent::Kind::init, 0, nullptr, {}});
  if (!controls.is_closed() && layer)
    layer->run(*form, QSize(density.scaled(design.width),
                            density.scaled(design.height) + form->title_height()));
  const int result = controls.result();
  if (layer) {
    layer->hide();
    layer->close_wanted = nullptr;
    layer->deleteLater();
    layer->uncover();
  }
  return result;
}

std::unique_ptr<Dialog> QtDialogs::open_modeless(const DialogTemplate& dialog,
                                                 DialogProcedure& procedure) {
  Shell* shell = window_.shell();
  if (!shell) return nullptr;
  auto* form = new FormWidget(&shell->content(), window_.density(), dialog, false);
  form->painted = [this] { window_.note_first_paint(); };
  auto controls = std::make_unique<QtDialog>(form, window_.density(), procedure);
  shell->add_sheet(form);
  controls->handle({DialogEvent::Kind::init, 0, nullptr, {}});
  form->show();
  return controls;
}

}  // namespace orvello
