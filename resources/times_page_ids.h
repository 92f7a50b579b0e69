// The controls of the settings sheet's Times page.
#pragma once

namespace orvello {

inline constexpr int kDialogTimesPage = 109;

}  // namespace orvello
