#include "hosts/qt/form_layout.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;

constexpr Size kHandheldForm{240, 268};  // the screen less its menu bar and a title
constexpr int kLeastList = 40;
constexpr int kRightMargin = 24;
constexpr double kSheetGrowth = 1.5;  // how far a sheet grows on a large window

int scaled(double length, double unit) { return static_cast<int>(std::lround(length * unit)); }

bool is_button(Kind kind) { return kind == Kind::button || kind == Kind::default_button; }

// The control that takes the height left over: the tallest list, else calendar, else picture, else
// edit of several lines.
const ControlTemplate* growing_control(const DialogTemplate& dialog) {
  const ControlTemplate* found = nullptr;
  for (const Kind kind :
       {Kind::report, Kind::list, Kind::month_calendar, Kind::custom, Kind::edit}) {
    for (const ControlTemplate& control : dialog.controls)
      if (control.kind == kind && control.place.height >= kLeastList &&
          (!found || control.place.height > found->place.height))
        found = &control;
    if (found) return found;
  }
  return nullptr;
}

void widen(Rect& place, const ControlTemplate& control, int design_width, int extra) {
  const Rect& drawn = control.place;
  if (is_button(control.kind)) {
    const int off_center = drawn.center().x - design_width / 2;
    if (std::abs(off_center) <= design_width / 10)
      place.x += extra / 2;
    else if (off_center > 0)
      place.x += extra;
    return;
  }
  const bool to_the_edge = drawn.right() >= design_width - kRightMargin;
  if (to_the_edge && drawn.width * 2 >= design_width) {
    place.width += extra;
    return;
  }
  // Two halves side by side share what is left over; a label keeps beside its field.
  const bool grows = control.kind != Kind::label && control.kind != Kind::check_box &&
                     control.kind != Kind::radio_button;
  const int half = extra / 2;
  if (drawn.x * 5 >= design_width * 2) {
    place.x += half;
    if (grows && to_the_edge) place.width += half;
  } else if (grows && drawn.right() * 20 >= design_width * 7 &&
             drawn.right() * 20 <= design_width * 11) {
    place.width += half;
  }
}

}  // namespace

Size design_size(const DialogTemplate& dialog) {
  Size size = dialog.size;
  if (size.width <= 0) size.width = kHandheldForm.width;
  if (size.height <= 0) size.height = kHandheldForm.height;
  for (const ControlTemplate& control : dialog.controls) {
    size.width = std::max(size.width, control.place.right());
    size.height = std::max(size.height, control.place.bottom());
  }
  return size;
}

FormLayout lay_out_form(const DialogTemplate& dialog, double unit, Size available) {
  const Size design = design_size(dialog);
  const ControlTemplate* growing = growing_control(dialog);
  const int extra_width = std::max(0, available.width - scaled(design.width, unit));
  int extra_height = growing ? available.height - scaled(design.height, unit) : 0;
  if (growing)
    extra_height = std::max(extra_height, -scaled(growing->place.height - kLeastList, unit));
  FormLayout layout;
  // A popup that is one picture is as large as that wants to be.
  const bool picture = dialog.popup && dialog.controls.size() == 1 && !dialog.place.empty();
  if (picture) return {available, {{0, 0, available.width, available.height}}};
  layout.body = {scaled(design.width, unit) + extra_width,
                 scaled(design.height, unit) + extra_height};
  for (const ControlTemplate& control : dialog.controls) {
    const Rect& drawn = control.place;
    if (drawn == Rect{0, 0, design.width, design.height}) {
      layout.places.push_back({0, 0, layout.body.width, layout.body.height});
      continue;
    }
    const int x = scaled(drawn.x, unit), y = scaled(drawn.y, unit);
    Rect place{x, y, scaled(drawn.right(), unit) - x, scaled(drawn.bottom(), unit) - y};
    if (extra_width) widen(place, control, design.width, extra_width);
    if (growing && &control == growing)
      place.height += extra_height;
    else if (growing && drawn.y >= growing->place.bottom())
      place.y += extra_height;
    layout.places.push_back(place);
  }
  return layout;
}

Rect popup_place(const Rect& wanted, Size whole) {
  const int width = std::min(wanted.width, whole.width);
  const int height = std::min(wanted.height, whole.height);
  return {std::clamp(wanted.x, 0, whole.width - width),
          std::clamp(wanted.y, 0, whole.height - height), width, height};
}

Rect sheet_place(const DialogTemplate& dialog, double unit, int title_height, Size whole) {
  const Size design = design_size(dialog);
  const Size drawn{scaled(design.width, unit), scaled(design.height, unit) + title_height};
  Size size = drawn;
  if (dialog.full_screen && !dialog.popup) {
    size = {scaled(drawn.width, kSheetGrowth), scaled(drawn.height, kSheetGrowth)};
    const bool handheld = whole.width <= size.width && whole.height <= size.height;
    if (handheld) return {0, 0, whole.width, whole.height};
  }
  size = {std::min(size.width, whole.width), std::min(size.height, whole.height)};
  return {(whole.width - size.width) / 2, (whole.height - size.height) / 2, size.width,
          size.height};
}

}  // namespace orvello
