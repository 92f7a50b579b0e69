// The toolkit's application, with the way that faults take which nothing else has caught.
#pragma once

#include <QApplication>

#include "hosts/shared/fault_teller.h"

namespace orvello {

class GuardedApplication : public QApplication, public FaultTeller {
 public:
  GuardedApplication(int& argc, char** argv);

  // The last resort: counts what no callback has caught, and takes it.
  bool notify(QObject* receiver, QEvent* event) override;
  int uncaught() const { return uncaught_; }

 private:
  int uncaught_ = 0;
};

}  // namespace orvello
