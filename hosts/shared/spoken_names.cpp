#include "hosts/shared/spoken_names.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;

bool has_name_of_its_own(Kind kind) {
  return kind == Kind::custom || kind == Kind::report || kind == Kind::month_calendar ||
         kind == Kind::picture_button || kind == Kind::notes || kind == Kind::slider ||
         kind == Kind::date_picker;
}

}  // namespace

bool is_named_by_label(Kind kind) {
  switch (kind) {
    case Kind::label:
    case Kind::button:
    case Kind::default_button:
    case Kind::check_box:
    case Kind::radio_button:
    case Kind::toggle:
      return false;
    default:
      return true;
  }
}

void pass_label(const ControlTemplate& control, Text& label) {
  if (!is_named_by_label(control.kind)) label = control.kind == Kind::label ? control.text : Text();
}

Text spoken_name(const ControlTemplate& control, const Text& label, const Text& title) {
  Text name = has_name_of_its_own(control.kind) ? control.text : Text();
  if (name.empty()) name = label;
  while (!name.empty() && (name.back() == u':' || name.back() == u' ')) name.pop_back();
  return name.empty() ? title : name;
}

Text spoken_row(const ReportRow& row) {
  if (!row.name.empty()) return row.name;
  Text text;
  for (const Text& cell : row.cells) {
    if (cell.empty()) continue;
    if (!text.empty()) text += u' ';
    text += cell;
  }
  return text;
}

}  // namespace orvello
