// The controls of the settings sheet's Display page.
#pragma once

namespace orvello {

inline constexpr int kDialogDisplayPage = 107;

inline constexpr int kDisplayAllDates = 1009;
inline constexpr int kDisplayClearType = 1010;
inline constexpr int kDisplayExpired = 1011;
inline constexpr int kDisplayTimePanel = 1016;
inline constexpr int kDisplayFree = 1017;
inline constexpr int kDisplayLocation = 1018;
inline constexpr int kDisplayMonthIcons = 1019;
inline constexpr int kDisplayJulian = 1020;
inline constexpr int kDisplayWrap = 1021;
inline constexpr int kDisplayYearColors = 1022;
inline constexpr int kDisplayAlarm = 1023;
inline constexpr int kDisplayDayLabel = 1024;
inline constexpr int kDisplayDaysOff = 1025;
inline constexpr int kDisplayCategoryIcon = 1026;
inline constexpr int kDisplayCategoryColors = 1027;
inline constexpr int kDisplayFontSize = 1088;
inline constexpr int kDisplayFontSizeLabel = 1089;
inline constexpr int kDisplayDayHeading = 1090;
inline constexpr int kDisplayMonthHeading = 1091;
inline constexpr int kDisplayYearHeading = 1092;
inline constexpr int kDisplayGeneralHeading = 1093;

}  // namespace orvello
