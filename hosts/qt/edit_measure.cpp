#include "hosts/qt/edit_measure.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>

#include "hosts/qt/callbacks.h"
#include "resources/editor_ids.h"
#include "resources/ids.h"

namespace orvello {
namespace {

constexpr int kLongestWait = 5000;

QString control_name(int control) { return QStringLiteral("control%1").arg(control); }

void send_key(QWidget* widget, int key, const QString& text) {
  if (!widget) return;
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
  QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
  QCoreApplication::sendEvent(widget, &press);
  QCoreApplication::sendEvent(widget, &release);
}

void send_click(QWidget* widget) {
  if (!widget) return;
  const QPointF middle = QRectF(widget->rect()).center();
  for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QMouseEvent event(type, middle, widget->mapToGlobal(middle), Qt::LeftButton, held, {});
    QCoreApplication::sendEvent(widget, &event);
  }
}

// Who fills in the form while the command that opened it waits for its end.
class MeasuringPerson : public Guarded<QObject> {
 public:
  explicit MeasuringPerson(QWidget& window) : window_(window) {
    qApp->installEventFilter(this);
    timer_.start();
  }
  double opened = -1, saved = -1;

  void see_list() {
    if (saving_ && saved < 0) saved = elapsed();
  }
  bool list_painted() const { return list_painted_; }

 protected:
  bool filter_event(QObject* object, QEvent* event) override {
    if (event->type() != QEvent::Paint) return false;
    if (opened < 0 && object->objectName() == control_name(kLineSubject)) {
      opened = 0;
      // A paint happens inside of what shows it: when the loop is back, it has been shown.
      after(0, this, [this] {
        opened = elapsed();
        fill_in();
      });
    }
    auto* list = window_.findChild<QAbstractScrollArea*>(control_name(kControlDayList));
    list_painted_ = list_painted_ || (saving_ && list && object == list->viewport());
    return false;
  }

 private:
  double elapsed() const { return static_cast<double>(timer_.nsecsElapsed()) / 1e6; }
  QWidget* control(int id) { return window_.findChild<QWidget*>(control_name(id)); }
  void fill_in() {
    send_click(control(kLineSubject));
    after(50, this, [this] {
      send_key(QApplication::focusWidget(), Qt::Key_M, QStringLiteral("M"));
      after(50, this, [this] {
        saving_ = true;
        timer_.restart();
        send_click(control(kEditorOk));
      });
    });
  }

  QWidget& window_;
  QElapsedTimer timer_;
  bool saving_ = false, list_painted_ = false;
};

}  // namespace

EditTimes measure_edits(QWidget& window, int count) {
  EditTimes times;
  for (int i = 0; i < count; ++i) {
    auto* list = window.findChild<QAbstractScrollArea*>(control_name(kControlDayList));
    if (!list) return times;
    QTimer patience;  // also wakes the loop when nothing else does
    patience.start(kLongestWait);
    QElapsedTimer whole;
    whole.start();
    MeasuringPerson person(window);
    send_key(list, Qt::Key_Insert, {});
    while (!person.list_painted() && !whole.hasExpired(kLongestWait))
      QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    if (!person.list_painted() || person.opened < 0) return times;
    person.see_list();
    times.opened.push_back(person.opened);
    times.saved.push_back(person.saved);
    QCoreApplication::processEvents(QEventLoop::AllEvents);
  }
  return times;
}

}  // namespace orvello
