// A clock in a zone of fixed offset.
#pragma once

#include "hosts/headless/headless_ports.h"

namespace orvello {

// Two hours east of Greenwich, always.
inline HeadlessClock eastern_clock() {
  HeadlessClock clock({2026, 11, 6, 21, 12, 0, 0, 0});
  clock.set_zone(Zone("", {{LocalSeconds(), 7200, 7200, std::nullopt, {}}}));
  return clock;
}

}  // namespace orvello
