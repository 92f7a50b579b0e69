// The controls of the settings sheet's Pretext page.
#pragma once

namespace orvello {

inline constexpr int kDialogPretextPage = 150;

}  // namespace orvello
