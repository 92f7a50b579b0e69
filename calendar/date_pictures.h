// Date and time pictures: the program's own layouts and their expansion with a locale's words.
#pragma once

#include "base/text.h"
#include "calendar/calendar_date.h"
#include "calendar/locale_data.h"

namespace orvello {

// d dd ddd dddd, M MM MMM MMMM, y yy yyyy; text in single quotes is literal ('' is a quote), and
// so is every other character. Month names stand in the genitive beside a day number.
Text FormatDatePicture(TextView picture, const SystemTime& time, const LocaleData& locale);

// h hh H HH m mm t tt, quotes as above.
Text FormatTimePicture(TextView picture, const SystemTime& time, const LocaleData& locale);

// The picture of dayviewheaderformat 0-5; any other index leaves `picture` as it was.
void LongDatePicture(int dayviewheaderformat, Text& picture);

Text OneDateHeaderPicture(int showdaylabel, const LocaleData& locale);

// "ddd " and the short date in the locale's order, its separator quoted.
Text DatePickerPicture(const LocaleData& locale);

}  // namespace orvello
