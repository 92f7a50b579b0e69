#include "hosts/qt/turn_measure.h"

#include <QAbstractScrollArea>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTimer>

#include "hosts/qt/callbacks.h"
#include "resources/ids.h"

namespace orvello {
namespace {

constexpr int kPatienceMilliseconds = 5000;

class PaintWatch : public Guarded<QObject> {
 public:
  bool filter_event(QObject*, QEvent* event) override {
    painted = painted || event->type() == QEvent::Paint;
    return false;
  }
  bool painted = false;
};

}  // namespace

std::vector<double> measure_turns(QWidget& window, int count) {
  const QString name = QStringLiteral("control%1").arg(kControlDayList);
  std::vector<double> times;
  QElapsedTimer timer;
  for (int i = 0; i < count; ++i) {
    // Found anew each time: a turn may make another one.
    auto* list = window.findChild<QAbstractScrollArea*>(name);
    if (!list) return times;
    PaintWatch watch;
    list->viewport()->installEventFilter(&watch);
    QTimer patience;  // also wakes the loop when nothing else does
    patience.start(kPatienceMilliseconds);
    timer.start();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Right, Qt::NoModifier);
    QCoreApplication::sendEvent(list, &press);
    QCoreApplication::sendEvent(list, &release);
    // A paint happens inside of what shows it: when the loop is back, it has been shown.
    while (!watch.painted && !timer.hasExpired(kPatienceMilliseconds))
      QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    if (!watch.painted) return times;
    times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    // What the turn left for later is no part of the next one.
    QCoreApplication::processEvents(QEventLoop::AllEvents);
  }
  return times;
}

}  // namespace orvello
