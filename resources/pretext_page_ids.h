// The controls of the settings sheet's Pretext page.
#pragma once

namespace orvello {

inline constexpr int kDialogPretextPage = 150;

inline constexpr int kPretextChoice = 1034;  // of subjects or locations
inline constexpr int kPretextEdit = 1046;
inline constexpr int kPretextAdd = 1042;
inline constexpr int kPretextList = 1029;
inline constexpr int kPretextDelete = 1043;

}  // namespace orvello
