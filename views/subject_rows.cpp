#include "views/subject_rows.h"

#include "draw/text_direction.h"

namespace orvello {
namespace {

constexpr std::size_t kMeasuredSubject = 300;

DayRow piece_of(const DayRow& row) {
  DayRow piece;
  piece.oid = row.oid;
  piece.start = row.start;
  piece.first_category = row.first_category;
  piece.kind = DayRow::Kind::wrapped;
  return piece;
}

}  // namespace

TimeParts time_parts(TextView time) {
  const std::size_t dash = time.find(u'-', 1);
  if (dash == TextView::npos) return {time, {}};
  return {time.substr(0, dash + 1), time.substr(dash + 1)};
}

bool SubjectRows::is_broken(TextView time, int time_width) {
  return !time_parts(time).end.empty() && !characters_.surely_fits(time, time_width) &&
         measure_.measure(time, font_).width > time_width;
}

// The first piece stays in the row itself.
void SubjectRows::add(const DayRow& row, int width, std::vector<DayRow>& rows) {
  TextView rest = TextView(row.subject).substr(0, kMeasuredSubject);
  rows.push_back(row);
  if (characters_.surely_fits(rest, width)) return;
  std::size_t units = fitting_units(measure_, rest, font_, width);
  if (units == rest.size()) return;
  bool first = true;
  for (; !rest.empty(); units = fitting_units(measure_, rest, font_, width)) {
    units = line_units(rest, units);
    if (!first) rows.push_back(piece_of(row));
    rows.back().subject = line_of(row.subject, rest.substr(0, units));
    first = false;
    rest.remove_prefix(units);
    if (!rest.empty() && rest.front() == u' ') rest.remove_prefix(1);
  }
}

DayAgenda SubjectRows::broken(const DayAgenda& agenda, int width, int time_width) {
  DayAgenda made = agenda;
  made.rows.clear();
  made.row_ends.clear();
  made.row_colors.clear();
  for (std::size_t i = 0; i < agenda.rows.size(); ++i) {
    const DayRow& row = agenda.rows[i];
    const std::size_t before = made.rows.size();
    add(row, width, made.rows);
    const bool alone = made.rows.size() == before + 1 &&
                       (i + 1 == agenda.rows.size() || !agenda.rows[i + 1].continues());
    if (alone && is_broken(row.time, time_width)) made.rows.push_back(piece_of(row));
    made.row_ends.resize(made.rows.size(), agenda.row_ends[i]);
    made.row_colors.resize(made.rows.size(),
                           i < agenda.row_colors.size() ? agenda.row_colors[i] : kWhite);
  }
  made.row_shades = build_row_shades(made.rows);
  return made;
}

}  // namespace orvello
