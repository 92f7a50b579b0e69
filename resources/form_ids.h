// Controls that the editor's companions have in common.
#pragma once

namespace orvello {

inline constexpr int kControlHeaderOk = 1000;
inline constexpr int kControlHeaderCancel = 1029;

}  // namespace orvello
