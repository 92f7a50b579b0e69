// The controls of the settings sheet's Times page.
#pragma once

namespace orvello {

inline constexpr int kDialogTimesPage = 109;

inline constexpr int kTimesHeading = 1072;
inline constexpr int kTimesMarks[] = {1012, 1013, 1014, 1015};  // where the periods begin and end
inline constexpr int kTimesPeriods[] = {1074, 1075, 1076};      // their names
inline constexpr int kTimesDiagram = 1802;
inline constexpr int kTimesSeparator = 1801;
inline constexpr int kTimesDefaults = 1073;  // the second heading
inline constexpr int kTimesStartLabel = 1077;
inline constexpr int kTimesStart = 1016;
inline constexpr int kTimesEndLabel = 1078;
inline constexpr int kTimesEnd = 1018;
inline constexpr int kTimesRemind = 1050;
inline constexpr int kTimesReminderName = 1079;
inline constexpr int kTimesAmount = 1046;
inline constexpr int kTimesUnit = 1041;

// Parts of 222 of the diagram's height: the middle of the first list, and from one to the next.
inline constexpr int kTimesFirstMiddle = 27, kTimesPitch = 56, kTimesHeight = 222;

}  // namespace orvello
