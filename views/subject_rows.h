// Breaking subjects that are wider than their column into rows below each other, and times where
// they would leave hardly any room beside them.
#pragma once

#include "draw/screen_layout.h"
#include "draw/wrap_text.h"
#include "store/day_agenda.h"

namespace orvello {

// What stands behind the first dash, which stays with the start: "9:00a-" and "10:00a". The second
// is empty where there is none.
struct TimeParts {
  TextView start, end;
};
TimeParts time_parts(TextView time);

class SubjectRows {
 public:
  SubjectRows(Canvas& measure, const FontSpec& font)
      : measure_(measure), font_(font), characters_(measure, font) {}

  // The agenda with its subjects in rows no wider than `width`, and a second row wherever a time is
  // wider than `time_width`; each row keeps the oid, the end and the colour of its appointment.
  DayAgenda broken(const DayAgenda& agenda, int width, int time_width);
  bool is_broken(TextView time, int time_width);  // whether its end stands in the next row

 private:
  void add(const DayRow& row, int width, std::vector<DayRow>& rows);

  Canvas& measure_;
  FontSpec font_;
  CharacterWidths characters_;
};

}  // namespace orvello
