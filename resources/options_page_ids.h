// The controls of the settings sheet's Options page.
#pragma once

namespace orvello {

inline constexpr int kDialogOptionsPage = 141;

}  // namespace orvello
