// A field for a time of day: a combo of half hours, into which any time may be typed. What is no
// time never becomes one: the time before stays, and is to be told.
#pragma once

#include "ports/dialog.h"
#include "ports/message_box.h"
#include "settings/settings_record.h"

namespace orvello {

class TimeField {
 public:
  // `line` shows the time, too, while nobody edits it; 0: there is none. Settings outlive this.
  TimeField(const SettingsRecord& settings, int combo, int line = 0)
      : settings_(settings), combo_(combo), line_(line) {}

  void fill(Dialog& dialog) const;                      // the list of half hours
  void show(Dialog& dialog, CalendarDate time_of_day);  // from now on this one
  CalendarDate time() const { return time_; }           // a fraction of a day
  int combo() const { return combo_; }

  enum class Typed {
    same,   // what was shown
    other,  // another time, which is shown as the others are
    none    // no time: the one before is shown again
  };
  // Takes what stands in the combo; once a row was chosen, and when the field is left.
  Typed take(Dialog& dialog);
  // The same, and says so when it is no time.
  Typed take(Dialog& dialog, MessageBoxes& boxes);

 private:
  const SettingsRecord& settings_;
  int combo_, line_;
  CalendarDate time_ = 0;
  Text shown_;
};

}  // namespace orvello
