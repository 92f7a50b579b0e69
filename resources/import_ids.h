// Controls of the import's forms.
#pragma once

namespace orvello {

inline constexpr int kDialogImport = 300;
inline constexpr int kControlImportText = 301;
inline constexpr int kControlImportFiles = 302;
inline constexpr int kControlImportItems = 305;

inline constexpr int kDialogProgress = 360;
inline constexpr int kControlProgressText = 361;
inline constexpr int kControlProgressBar = 362;

}  // namespace orvello
