// Breaking subjects that are wider than their column into rows below each other, and times where
// they would leave hardly any room beside them.
#pragma once

#include <cstdint>
#include <vector>

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

// A row of the list that is to be: so much of the subject of one of the agenda's rows. Small, since
// a day may have thousands and several widths are tried.
struct SubjectPiece {
  std::uint32_t row = 0;
  std::uint32_t begin = 0, units = 0;
  bool first = true;  // the row itself; it stays whole where it has but one piece
};

class SubjectRows {
 public:
  SubjectRows(Canvas& measure, const FontSpec& font)
      : measure_(measure), font_(font), characters_(measure, font) {}

  // Subjects in pieces no wider than `width`, and a second, empty one wherever a time is wider than
  // `time_width`.
  std::vector<SubjectPiece> pieces(const DayAgenda& agenda, int width, int time_width);
  bool is_broken(TextView time, int time_width);  // whether its end stands in the next row

 private:
  void add(TextView subject, std::uint32_t row, int width, std::vector<SubjectPiece>& pieces);

  Canvas& measure_;
  FontSpec font_;
  CharacterWidths characters_;
};

// The agenda in these rows; each keeps the oid, the end and the colour of its appointment.
DayAgenda in_pieces(const DayAgenda& agenda, const std::vector<SubjectPiece>& pieces);

}  // namespace orvello
