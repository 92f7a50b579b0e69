#include "hosts/qt/qt_dialog.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCoreApplication>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/qt_text.h"
#include "hosts/qt/window_place.h"
#include "hosts/shared/dialog_input.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

}  // namespace

std::shared_ptr<EventQueue> make_event_queue() {
  return std::make_shared<EventQueue>(
      [](EventQueue::Action action) { later(QCoreApplication::instance(), std::move(action)); });
}

QtDialog::QtDialog(FormWidget* form, const Density& density, DialogProcedure& procedure,
                   std::shared_ptr<EventQueue> queue)
    : form_(form), density_(density), procedure_(procedure), queue_(std::move(queue)) {
  form->report = [this](const DialogEvent& event) {
    // What goes away may still be painted.
    if (event.kind == Event::paint) return procedure_.handle(*this, event);
    const auto waiting = queue_;
    tell(event);
    if (is_input(event.kind)) waiting->flush();
  };
  for (const ControlTemplate& control : form->shown_template().controls)
    handles_[control.id] = make_handles(control.kind, *form->control(control.id), density);
}

QtDialog::~QtDialog() {
  stop_timers();
  if (!form_) return;
  form_->report = [](const DialogEvent&) {};
  form_->hide();
  form_->deleteLater();  // this may be called from one of its events
}

void QtDialog::add(std::function<void()> action) {
  if (is_closed_) return;
  queue_->add([this, alive = std::weak_ptr<bool>(alive_), action = std::move(action)] {
    if (!alive.expired() && !is_closed_) action();
  });
}

void QtDialog::tell(const DialogEvent& event) {
  add([this, event] { procedure_.handle(*this, event); });
}

void QtDialog::close_wanted() {
  add([this] {
    if (!procedure_.may_close(*this) || is_closed_) return;
    const std::weak_ptr<bool> alive = alive_;
    procedure_.handle(*this, {Event::close, 0, nullptr, {}});
    if (!alive.expired() && !is_closed_) close(0);
  });
}

const ControlHandles& QtDialog::handles(int control) const {
  static const ControlHandles none;
  const auto found = handles_.find(control);
  return found == handles_.end() ? none : found->second;
}

Text QtDialog::text(int control) const {
  if (control == 0) return form_ ? from_qt(form_->title()) : Text();
  QWidget* widget = find(control);
  return widget ? text_of(*widget) : Text();
}

void QtDialog::set_text(int control, TextView text) {
  if (control == 0 && form_) {
    form_->set_title(to_qt(text));
    if (titled) titled(to_qt(text));
  }
  if (QWidget* widget = find(control)) set_text_of(*widget, text);
}

bool QtDialog::checked(int control) const {
  auto* button = qobject_cast<QAbstractButton*>(find(control));
  return button && button->isChecked();
}

void QtDialog::set_checked(int control, bool checked) {
  auto* button = qobject_cast<QAbstractButton*>(find(control));
  if (!button) return;
  // A group of radio buttons would keep its last one.
  QButtonGroup* group = button->group();
  if (group && !checked) group->setExclusive(false);
  button->setChecked(checked);
  if (group) group->setExclusive(true);
}

Rect QtDialog::place(int control) const {
  const QWidget* widget = find(control);
  if (!widget || !widget->isVisible()) return {};
  return place_in_window(*widget, widget->rect(), density_);
}

// They go with the form, which may be gone already.
void QtDialog::stop_timers() {
  for (auto& [id, timer] : timers_)
    if (timer) timer->stop();
}

void QtDialog::set_timer(int id, int milliseconds) {
  if (!form_) return;
  ticked_.erase(id);
  if (milliseconds <= 0) {
    const auto found = timers_.find(id);
    if (found != timers_.end() && found->second) found->second->stop();
    return;
  }
  QPointer<QTimer>& timer = timers_[id];
  if (!timer) {
    timer = new QTimer(form_);
    on_signal(timer.data(), &QTimer::timeout, form_, [this, id] {
      // Ticks that were not told yet are one.
      if (!ticked_.insert(id).second) return;
      add([this, id] {
        if (ticked_.erase(id) > 0) procedure_.handle(*this, {Event::timer, id, nullptr, {}});
      });
    });
  }
  timer->start(milliseconds);
}

void QtDialog::end(int result) {
  is_closed_ = true;
  result_ = result;
  stop_timers();
}

void QtDialog::close(int result) {
  if (is_closed_ || !closed) return;
  end(result);
  closed(result);
}

}  // namespace orvello
