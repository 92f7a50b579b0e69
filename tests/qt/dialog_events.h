// A procedure that keeps all events but the paints.
#pragma once

#include <QCoreApplication>
#include <functional>
#include <vector>

#include "ports/dialog.h"

namespace orvello {

struct EventLog : DialogProcedure {
  void handle(Dialog& dialog, const DialogEvent& event) override {
    if (event.kind == DialogEvent::Kind::paint) {
      if (paint) paint(event);
      return;
    }
    events.push_back(event);
    if (act) act(dialog, event);
  }
  // What was told up to now: events come from the message loop.
  std::vector<DialogEvent> of(int control) const {
    QCoreApplication::processEvents();
    std::vector<DialogEvent> found;
    for (const DialogEvent& event : events)
      if (event.control == control) found.push_back(event);
    return found;
  }
  int count(DialogEvent::Kind kind, int control) const {
    int found = 0;
    for (const DialogEvent& event : of(control)) found += event.kind == kind;
    return found;
  }
  std::vector<DialogEvent> events;
  std::function<void(Dialog&, const DialogEvent&)> act;
  std::function<void(const DialogEvent&)> paint;
};

}  // namespace orvello
