// The recurrence editor's steps and controls.
#pragma once

#include "resources/form_ids.h"

namespace orvello {

inline constexpr int kDialogRecurrence = 147;

// The second step has a page for each kind of recurrence, in the order of the list of kinds.
inline constexpr int kStepTimes = 1, kStepRange = 3;
inline constexpr int kStepDaily = 21, kStepWeekly = 22, kStepMonthly = 23, kStepYearly = 24;

// Step 1.
inline constexpr int kControlRecurrenceType = 1046;
inline constexpr int kControlRecurrenceStartTime = 1016;
inline constexpr int kControlRecurrenceEndTime = 1018;
inline constexpr int kControlStartTimeLabel = 1138;
inline constexpr int kControlEndTimeLabel = 1139;
inline constexpr int kControlTimesLabel = 1140;

// Step 2.
inline constexpr int kControlEveryDays = 1701;
inline constexpr int kControlDailyInterval = 1031;
inline constexpr int kControlDaysLabel = 1801;
inline constexpr int kControlEveryWeekday = 1702;
inline constexpr int kControlWeekdaysLabel = 1802;

inline constexpr int kControlEveryWeeksLabel = 1803;
inline constexpr int kControlWeeklyInterval = 1032;
inline constexpr int kControlWeeksLabel = 1804;
// By weekday, Sunday first.
inline constexpr int kControlWeekdays[7] = {1600, 1607, 1608, 1609, 1610, 1611, 1613};

inline constexpr int kControlMonthDayChoice = 1703;
inline constexpr int kControlMonthDay = 1033;
inline constexpr int kControlEveryMonthsLabel = 1805;
inline constexpr int kControlMonthlyInterval = 1034;
inline constexpr int kControlMonthsLabel = 1806;
inline constexpr int kControlMonthNthChoice = 1704;
inline constexpr int kControlMonthInstance = 1035;
inline constexpr int kControlMonthKind = 1036;
inline constexpr int kControlEveryMonthsNthLabel = 1807;
inline constexpr int kControlNthInterval = 1037;
inline constexpr int kControlMonthsNthLabel = 1808;

inline constexpr int kControlYearDayChoice = 1705;
inline constexpr int kControlYearMonth = 1038;
inline constexpr int kControlYearDay = 1039;
inline constexpr int kControlYearNthChoice = 1706;
inline constexpr int kControlYearInstance = 1040;
inline constexpr int kControlYearKind = 1041;
inline constexpr int kControlOfLabel = 1809;
inline constexpr int kControlNthMonth = 1043;
// Only for a series that skips years already.
inline constexpr int kControlEveryYearsLabel = 1810;
inline constexpr int kControlYearlyInterval = 1811;
inline constexpr int kControlYearsLabel = 1812;

// Step 3.
inline constexpr int kControlRangeStartLabel = 1813;
inline constexpr int kControlRangeStart = 1101;
inline constexpr int kControlNoEnd = 1707;
inline constexpr int kControlEndBy = 1708;
inline constexpr int kControlRangeEnd = 1102;
inline constexpr int kControlEndAfter = 1709;
inline constexpr int kControlCount = 1044;
inline constexpr int kControlCountLabel = 1814;
inline constexpr int kControlSummary = 1815;  // the pages in words
inline constexpr int kControlDone = 1045;

inline constexpr int kControlNextStep = 1042;
inline constexpr int kControlPreviousStep = 1092;

}  // namespace orvello
