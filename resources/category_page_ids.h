// The controls of the settings sheet's Category page.
#pragma once

namespace orvello {

inline constexpr int kDialogCategoryPage = 119;

}  // namespace orvello
