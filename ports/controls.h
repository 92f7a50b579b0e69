// What a dialog's procedure says to a control of one kind. A handle belongs to its dialog. Rows
// count from 0, and -1 is none; a row that is not there selects none. Setters are silent.
#pragma once

#include <cstdint>
#include <vector>

#include "base/image.h"
#include "base/text.h"
#include "calendar/dates.h"
#include "ports/accessibility.h"
#include "ports/menu_bar.h"

namespace orvello {

// A drop list or a combo. Fresh rows are not selected; what stands in a combo stays.
class ChoiceControl {
 public:
  virtual ~ChoiceControl() = default;
  virtual void set_rows(const std::vector<Text>& rows) = 0;
  virtual std::vector<Text> rows() const = 0;
  virtual int selected() const = 0;  // of a combo: the first row that stands in it
  virtual void select(int row) = 0;  // a combo takes the row's text, without one none
  virtual void open() = 0;           // drops the list down, and gives it the focus
};

// A list. Fresh rows are not selected. A tap selects and takes a row; in one with several selected
// rows it selects or clears it. The first of several selected ones is the text of the control.
class ListControl {
 public:
  virtual ~ListControl() = default;
  virtual void set_rows(const std::vector<Text>& rows) = 0;
  virtual std::vector<Text> rows() const = 0;
  virtual std::vector<int> selected() const = 0;          // ascending
  virtual void select(const std::vector<int>& rows) = 0;  // a list takes the first of them
  virtual void show_row(int row) = 0;                     // scrolls as little as it takes
};

// A date picker or month calendar. A calendar's change is `changed` when a person moves on in it
// and `taken` when a day is tapped or taken with Return.
class DateControl {
 public:
  virtual ~DateControl() = default;
  virtual MonthDayYear date() const = 0;
  virtual void set_date(const MonthDayYear& date) = 0;  // nothing for a date that is none
  // How weeks start in it, and the day that it marks as today.
  virtual void set_calendar(const MonthDayYear& today, bool monday_first) = 0;
  // How a date picker writes its date: a date picture, such as u"MMMM,dd".
  virtual void set_picture(TextView picture) = 0;
};

class RangeControl {
 public:
  virtual ~RangeControl() = default;
  virtual void set_range(int least, int most) = 0;  // the position stays within
  virtual int position() const = 0;
  virtual void set_position(int position) = 0;
};

// What shows a picture: a custom control, a report, a picture button. Points and places are the
// control's device pixels.
class DrawnControl {
 public:
  virtual ~DrawnControl() = default;
  virtual void invalidate() = 0;
  virtual void set_image(const Image& image) = 0;  // of a picture button
  // The parts of a custom control, for a screen reader; one that is chosen there is a pointer down
  // and up in its middle.
  virtual void set_parts(const std::vector<AccessibleCell>& parts) = 0;
  // Opens a menu at a point and waits for the choice; 0: none.
  virtual std::uint32_t track_menu(const std::vector<MenuItem>& items, Point at) = 0;
};

}  // namespace orvello
