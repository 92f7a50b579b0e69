// The controls of the settings sheet's Options page.
#pragma once

namespace orvello {

inline constexpr int kDialogOptionsPage = 141;

inline constexpr int kOptionsStartView = 1045;
inline constexpr int kOptionsWeekNumber = 1046;
inline constexpr int kOptionsFirstDay = 1047;
inline constexpr int kOptionsDayColors = 1048;
inline constexpr int kOptionsMonthColors = 1049;
inline constexpr int kOptionsHeader = 1050;
inline constexpr int kOptionsCategory = 1051;
inline constexpr int kOptionsClock = 1052;
inline constexpr int kOptionsWeekOne = 1086;  // of the number that is reckoned from a date
inline constexpr int kOptionsWeekOneLabel = 1087;
inline constexpr int kOptionsPreview = 1512;  // the month's shading in small
inline constexpr int kOptionsDefault = 1824;  // the device's calendar
inline constexpr int kOptionsStartViewLabel = 1072;
inline constexpr int kOptionsWeekNumberLabel = 1073;
inline constexpr int kOptionsFirstDayLabel = 1074;
inline constexpr int kOptionsDayColorsLabel = 1075;
inline constexpr int kOptionsMonthColorsLabel = 1076;
inline constexpr int kOptionsHeaderLabel = 1077;
inline constexpr int kOptionsCategoryLabel = 1078;
inline constexpr int kOptionsClockLabel = 1079;

}  // namespace orvello
