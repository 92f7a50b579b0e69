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

void SubjectRows::add(TextView subject, std::uint32_t row, int width,
                      std::vector<SubjectPiece>& pieces) {
  TextView rest = subject.substr(0, kMeasuredSubject);
  pieces.push_back({row, 0, static_cast<std::uint32_t>(rest.size()), true});
  if (characters_.surely_fits(rest, width)) return;
  std::size_t units = fitting_units(measure_, rest, font_, width);
  if (units == rest.size()) return;
  pieces.pop_back();
  for (bool first = true; !rest.empty(); first = false) {
    units = line_units(rest, units);
    const auto begin = static_cast<std::uint32_t>(rest.data() - subject.data());
    pieces.push_back({row, begin, static_cast<std::uint32_t>(units), first});
    rest.remove_prefix(units);
    if (!rest.empty() && rest.front() == u' ') rest.remove_prefix(1);
    units = fitting_units(measure_, rest, font_, width);
  }
}

std::vector<SubjectPiece> SubjectRows::pieces(const DayAgenda& agenda, int width, int time_width) {
  std::vector<SubjectPiece> made;
  made.reserve(agenda.rows.size() * 2);
  for (std::size_t i = 0; i < agenda.rows.size(); ++i) {
    const DayRow& row = agenda.rows[i];
    const auto number = static_cast<std::uint32_t>(i);
    const std::size_t before = made.size();
    add(row.subject, number, width, made);
    const bool alone = made.size() == before + 1 &&
                       (i + 1 == agenda.rows.size() || !agenda.rows[i + 1].continues());
    if (alone && is_broken(row.time, time_width)) made.push_back({number, 0, 0, false});
  }
  return made;
}

DayAgenda in_pieces(const DayAgenda& agenda, const std::vector<SubjectPiece>& pieces) {
  DayAgenda made;
  made.emptiness = agenda.emptiness;
  made.failed = agenda.failed;
  made.notes_seen = agenda.notes_seen;
  made.reminder_seen = agenda.reminder_seen;
  made.category_icon_seen = agenda.category_icon_seen;
  made.rows.reserve(pieces.size());
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const SubjectPiece& piece = pieces[i];
    const DayRow& row = agenda.rows[piece.row];
    const bool goes_on =
        i + 1 < pieces.size() && pieces[i + 1].row == piece.row && pieces[i + 1].units > 0;
    made.rows.push_back(piece.first ? row : piece_of(row));
    if (piece.units > 0 && (!piece.first || goes_on))
      made.rows.back().subject =
          line_of(row.subject, TextView(row.subject).substr(piece.begin, piece.units));
    made.row_ends.push_back(agenda.row_ends[piece.row]);
    made.row_colors.push_back(piece.row < agenda.row_colors.size() ? agenda.row_colors[piece.row]
                                                                   : kWhite);
  }
  made.row_shades = build_row_shades(made.rows);
  return made;
}

}  // namespace orvello
