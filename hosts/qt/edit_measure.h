// How long the appointment editor takes to come, and a saved appointment to be seen.
#pragma once

#include "hosts/shared/window_host.h"

class QWidget;

namespace orvello {

// In the Day view: asks for a new appointment, gives it a subject and saves it, `count` times.
// Fewer times when something was not there, or not painted in good time.
EditTimes measure_edits(QWidget& window, int count);

}  // namespace orvello
