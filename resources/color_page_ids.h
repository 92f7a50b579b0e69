// The controls of the settings sheet's Color page.
#pragma once

namespace orvello {

inline constexpr int kDialogColorPage = 105;

}  // namespace orvello
