// Key codes as the platform numbers them.
#pragma once

#include <cstdint>

class QKeyEvent;

namespace orvello {

std::uint32_t virtual_key(const QKeyEvent& event);  // 0: a key without a code

}  // namespace orvello
