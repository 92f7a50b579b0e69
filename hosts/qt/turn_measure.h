// How long the Day view takes from a key to the next day on the screen.
#pragma once

#include <vector>

class QWidget;

namespace orvello {

// Sends the Right key to the Day view's list, each time after the one before has been painted;
// milliseconds each. Fewer than `count` when there is no list, or it was not painted in good time.
std::vector<double> measure_turns(QWidget& window, int count);

}  // namespace orvello
