// A list that goes on scrolling after the pen has left it, slower and slower.
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <functional>

#include "hosts/shared/glide_motion.h"

namespace orvello {

class Glide {
 public:
  // `scroll` takes some pixels downwards and answers false at an end.
  Glide(QObject* owner, std::function<bool(double)> scroll);

  void start(double pixels_per_second);  // 0 ends it
  void halt() { timer_.stop(); }         // it stands, and has not ended yet
  void end();
  bool goes() const { return motion_.goes(); }

 private:
  void step();

  QTimer timer_;
  QElapsedTimer since_step_;
  GlideMotion motion_;
};

}  // namespace orvello
