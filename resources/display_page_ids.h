// The controls of the settings sheet's Display page.
#pragma once

namespace orvello {

inline constexpr int kDialogDisplayPage = 107;

}  // namespace orvello
