// The controls of the settings sheet's Profiles page.
#pragma once

namespace orvello {

inline constexpr int kDialogProfilesPage = 128;

inline constexpr int kProfilesLabel = 1082;
inline constexpr int kProfilesName = 1084;
inline constexpr int kProfilesSave = 1042;
inline constexpr int kProfilesDelete = 1043;
inline constexpr int kProfilesClear = 1047;
inline constexpr int kProfilesHint = 1085;  // over the list
inline constexpr int kProfilesList = 1029;

}  // namespace orvello
