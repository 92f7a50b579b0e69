// How long the appointment editor takes to come, and a saved appointment to be seen.
#pragma once

#include <vector>

class QWidget;

namespace orvello {

struct EditTimes {
  std::vector<double> opened;  // milliseconds from the key to the painted form
  std::vector<double> saved;   // from the tap on OK to the painted list, durable by then
};

// In the Day view: asks for a new appointment, gives it a subject and saves it, `count` times.
// Fewer times when something was not there, or not painted in good time.
EditTimes measure_edits(QWidget& window, int count);

}  // namespace orvello
