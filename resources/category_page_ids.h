// The controls of the settings sheet's Category page.
#pragma once

namespace orvello {

inline constexpr int kDialogCategoryPage = 119;
inline constexpr int kCategoryPageList = 1029;
inline constexpr int kCategoryPageAdd = 1042;
inline constexpr int kCategoryPageRemove = 1043;
inline constexpr int kCategoryPageRename = 1044;
inline constexpr int kCategoryPageColor = 1045;
inline constexpr int kCategoryPageName = 1046;
inline constexpr int kCategoryPageUseColor = 1047;

}  // namespace orvello
