// A person's choice from a menu without a screen.
#pragma once

#include <cstdint>
#include <vector>

#include "ports/menu_bar.h"

namespace orvello {

// 0: it is not there, or is off.
inline std::uint32_t chosen_of(const std::vector<MenuItem>& items, std::uint32_t command) {
  for (const MenuItem& item : items)
    if (item.command == command && item.enabled) return command;
  return 0;
}

}  // namespace orvello
