// The controls of the settings sheet's Icons page, and of its choice of an icon.
#pragma once

namespace orvello {

inline constexpr int kDialogIconsPage = 121;
inline constexpr int kIconsPageGrid = 1029;
inline constexpr int kIconsPageLabel = 1051;
inline constexpr int kIconsPageLabelText = 1078;
inline constexpr int kIconsPageIcon = 1042;
inline constexpr int kIconsPageClear = 1043;
inline constexpr int kIconsPageReset = 1044;

inline constexpr int kDialogIconChoice = 350;
inline constexpr int kIconChoiceGrid = 1029;
inline constexpr int kIconChoiceOk = 1000;
inline constexpr int kIconChoiceCancel = 1001;

}  // namespace orvello
