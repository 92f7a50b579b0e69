// The controls of the settings sheet's Icons page.
#pragma once

namespace orvello {

inline constexpr int kDialogIconsPage = 121;

}  // namespace orvello
