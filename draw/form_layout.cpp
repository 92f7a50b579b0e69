#include "draw/form_layout.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace orvello {
namespace {

using Across = ControlTemplate::Across;
using Down = ControlTemplate::Down;

constexpr Size kHandheldForm{240, 268};  // the screen less its menu bar and a title
constexpr int kGap = 4;
constexpr int kScrollGrip = 52;
constexpr int kLeastHeight = 40;  // of what stretches, where a form is too low
// What a form can do without in width: a scroll bar's.
constexpr int kSqueeze = 16;
constexpr double kWideEnough = 1.8;     // design widths, for two columns
constexpr double kSheetGrowth = 1.5;    // how far a sheet grows on a large window
constexpr double kColumnsGrowth = 2.0;  // with sections to put side by side

int scaled(double length, double unit) { return static_cast<int>(std::lround(length * unit)); }

struct Band {
  int top = 0;
  int bottom = 0;
};

// Whether a control is seen on a step; on step 0, which stands for all of them, each is.
bool is_on(const ControlTemplate& control, int step) {
  return step == 0 || control.step == 0 || control.step == step;
}

// Section 0 stands outside of the columns.
std::map<int, Band> bands_of(const DialogTemplate& dialog, int step) {
  std::map<int, Band> bands;
  for (const ControlTemplate& control : dialog.controls) {
    if (control.section == 0 || !is_on(control, step)) continue;
    const auto [found, fresh] =
        bands.try_emplace(control.section, Band{control.place.y, control.place.bottom()});
    found->second.top = std::min(found->second.top, control.place.y);
    found->second.bottom = std::max(found->second.bottom, control.place.bottom());
  }
  return bands;
}

// The sections from `second` on stand in the second column; none where that is 0. Design pixels.
struct Columns {
  int second = 0;
  int top = 0;     // of both
  int rise = 0;    // how far the second column's controls move up
  int bottom = 0;  // of the sections, in one column
  int saved = 0;   // by how much two columns are lower than one
  int heights[2]{};

  explicit operator bool() const { return second != 0; }
  bool in_second(const ControlTemplate& control) const {
    return second != 0 && control.section >= second;
  }
};

// The split that makes the higher column as low as possible.
Columns split(const DialogTemplate& dialog, int step) {
  const std::map<int, Band> bands = bands_of(dialog, step);
  Columns best;
  if (bands.size() < 2) return best;
  const int top = bands.begin()->second.top, bottom = bands.rbegin()->second.bottom;
  int above = bands.begin()->second.bottom;
  for (auto next = std::next(bands.begin()); next != bands.end(); ++next) {
    const int first = above - top, second = bottom - next->second.top;
    const int saved = bottom - top - std::max(first, second);
    if (!best || saved > best.saved)
      best = {next->first, top, next->second.top - top, bottom, saved, {first, second}};
    above = next->second.bottom;
  }
  return best;
}

Rect spread(Rect place, Across rule, int extra) {
  const int half = extra / 2;
  switch (rule) {
    case Across::keep:
      break;
    case Across::stretch:
      place.width += extra;
      break;
    case Across::right:
      place.x += extra;
      break;
    case Across::center:
    case Across::after_half:
      place.x += half;
      break;
    case Across::left_half:
      place.width += half;
      break;
    case Across::right_half:
      place.x += half;
      place.width += extra - half;
      break;
  }
  return place;
}

class Form {
 public:
  Form(const DialogTemplate& dialog, double unit, Size available, int step)
      : dialog_(dialog),
        unit_(unit),
        available_(available),
        step_(step),
        design_(design_size(dialog)) {}

  FormLayout lay_out() {
    choose_columns();
    for (const ControlTemplate& control : dialog_.controls)
      if (control.section != 0 && control.down == Down::stretch && is_on(control, step_))
        stretching_.insert(control.section);
    FormLayout layout;
    layout.body.width = std::max(available_.width, length(design_.width - kSqueeze));
    const int design_height = length(design_.height - columns_.saved);
    int down = available_.height - design_height;
    if (own_place()) {
      layout.body.width = available_.width;
    } else {
      const int sharing = std::max(1, columns_ ? 1 : static_cast<int>(stretching_.size()));
      const int spare = length(spare_height() * sharing);
      // What has to be scrolled anyway is spoiled by shrinking further than it takes to see it.
      if (down < -spare) down = -std::min(spare, hidden_height());
      if (down > 0 && !uses_height()) down = 0;
    }
    layout.body.height = design_height + down;
    for (const ControlTemplate& control : dialog_.controls)
      layout.places.push_back(place(control, layout.body.width, down));
    return layout;
  }

 private:
  int length(double design) const { return scaled(design, unit_); }
  bool own_place() const { return dialog_.popup && !dialog_.place.empty(); }

  Rect drawn(const ControlTemplate& control) const {
    const Rect& place = control.place;
    int up = 0;
    if (columns_.in_second(control)) up = columns_.rise;
    if (columns_ && control.section == 0 && place.y >= columns_.bottom) up = columns_.saved;
    const int x = length(place.x), y = length(place.y - up);
    return {x, y, length(place.right()) - x, length(place.bottom() - up) - y};
  }

  Rect place(const ControlTemplate& control, int width, int down) const {
    const bool in_column = columns_ && control.section != 0;
    const int room = in_column ? width / 2 : width;
    Rect place = spread(drawn(control), control.across, room - length(design_.width));
    if (columns_.in_second(control)) place.x += room;
    if (in_column) {
      const int column = columns_.in_second(control) ? 1 : 0;
      if (!column_stretches(column)) return place;
      const int highest = std::max(columns_.heights[0], columns_.heights[1]);
      // Rounded as the form's height is, so that it ends where that does.
      const int bottom = control.place.bottom() - (column == 1 ? columns_.rise : 0);
      down += length(bottom + highest - columns_.heights[column]) - length(bottom);
    }
    if (!in_column && control.section != 0 && stretching_.size() > 1)
      down = moved_down(place, control.section, down);
    if (control.down == Down::stretch) place.height = std::max(0, place.height + down);
    if (control.down == Down::bottom) place.y += down;
    return place;
  }

  // Sections that stretch, one below the other, share the room; the section's part of it.
  int moved_down(Rect& place, int section, int down) const {
    const int count = static_cast<int>(stretching_.size());
    const auto above =
        static_cast<int>(std::distance(stretching_.begin(), stretching_.lower_bound(section)));
    const int shift = down * above / count;
    place.y += shift;
    return above == count ? 0 : down * (above + 1) / count - shift;
  }

  bool column_stretches(int column) const {
    return std::any_of(
        dialog_.controls.begin(), dialog_.controls.end(), [&](const ControlTemplate& control) {
          return control.section != 0 && control.down == Down::stretch && is_on(control, step_) &&
                 columns_.in_second(control) == (column == 1);
        });
  }

  bool uses_height() const {
    return std::any_of(dialog_.controls.begin(), dialog_.controls.end(),
                       [&](const ControlTemplate& control) {
                         return control.down != Down::keep && is_on(control, step_);
                       });
  }

  // By how much the form can be lower than designed: what stretches shrinks, else what stands at
  // the lower edge comes up.
  int spare_height() const {
    int stretching = design_.height, kept = 0, lower = design_.height + kGap;
    bool stretches = false;
    for (const ControlTemplate& control : dialog_.controls) {
      if (!is_on(control, step_)) continue;
      if (control.down == Down::stretch) {
        stretches = true;
        stretching = std::min(stretching, std::max(0, control.place.height - kLeastHeight));
      } else if (control.down == Down::bottom) {
        lower = std::min(lower, control.place.y);
      } else {
        kept = std::max(kept, control.place.bottom());
      }
    }
    return std::min(stretches ? stretching : std::max(0, lower - kGap - kept), columns_spare());
  }

  // What stands below two columns comes up only as far as one that does not shrink lets it.
  int columns_spare() const {
    int spare = design_.height;
    for (const int column : {0, 1})
      if (columns_ && !column_stretches(column))
        spare = std::min(
            spare, std::max(columns_.heights[0], columns_.heights[1]) - columns_.heights[column]);
    return spare;
  }

  // How much of what stretches is never seen at once, beside a finger's room to scroll the form by.
  int hidden_height() const {
    int tallest = 0;
    for (const ControlTemplate& control : dialog_.controls)
      if (control.down == Down::stretch && is_on(control, step_))
        tallest = std::max(tallest, control.place.height);
    return std::max(0, length(tallest + kScrollGrip) - available_.height);
  }

  void choose_columns() {
    if (own_place()) return;
    const Columns candidate = split(dialog_, step_);
    const bool wide = available_.width >= length(design_.width * kWideEnough);
    const bool low = available_.height < length(design_.height - spare_height());
    if (candidate && (wide || low) && fit_beside(available_.width / 2)) columns_ = candidate;
  }

  // In a column of this width everything keeps most of its own, and nothing comes upon another.
  bool fit_beside(int width) const {
    std::vector<std::pair<const ControlTemplate*, Rect>> placed;
    for (const ControlTemplate& control : dialog_.controls) {
      if (control.section == 0 || !is_on(control, step_)) continue;
      const Rect wanted = drawn(control);
      const Rect place = spread(wanted, control.across, width - length(design_.width));
      if (place.x < 0 || place.right() > width || place.width * 3 < wanted.width * 2) return false;
      for (const auto& [other, at] : placed)
        if (!intersection(place, at).empty() && intersection(wanted, drawn(*other)).empty())
          return false;
      placed.emplace_back(&control, place);
    }
    return true;
  }

  const DialogTemplate& dialog_;
  double unit_;
  Size available_;
  int step_;
  Size design_;
  Columns columns_;
  std::set<int> stretching_;  // sections
};

Size covering(Size a, Size b) { return {std::max(a.width, b.width), std::max(a.height, b.height)}; }

// The size that a form makes something of on a large screen, without its frame.
Size grown(const DialogTemplate& dialog, double unit, int frame_height, Size whole) {
  const Size design = design_size(dialog);
  const Columns columns = split(dialog, 0);
  const double growth = columns ? kColumnsGrowth : kSheetGrowth;
  Size size{scaled(design.width, unit * growth), scaled(design.height, unit)};
  const bool stretches =
      std::any_of(dialog.controls.begin(), dialog.controls.end(),
                  [](const ControlTemplate& control) { return control.down == Down::stretch; });
  if (columns && size.width <= whole.width) size.height -= scaled(columns.saved, unit);
  if (stretches) size.height = scaled(size.height + frame_height, kSheetGrowth) - frame_height;
  return size;
}

Rect place_sheet(const std::vector<const DialogTemplate*>& forms, double unit, int frame_height,
                 Size whole) {
  Size size, large;
  bool full_screen = false;
  for (const DialogTemplate* form : forms) {
    const Size design = design_size(*form);
    size = covering(size, {scaled(design.width, unit), scaled(design.height, unit)});
    large = covering(large, grown(*form, unit, frame_height, whole));
    full_screen = full_screen || (form->full_screen && !form->popup);
  }
  if (full_screen) {
    const bool handheld = whole.width <= scaled(size.width, kSheetGrowth) &&
                          whole.height <= scaled(size.height + frame_height, kSheetGrowth);
    if (handheld) return {0, 0, whole.width, whole.height};
    size = large;
  }
  size.height += frame_height;
  size = {std::min(size.width, whole.width), std::min(size.height, whole.height)};
  return {(whole.width - size.width) / 2, (whole.height - size.height) / 2, size.width,
          size.height};
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

FormLayout lay_out_form(const DialogTemplate& dialog, double unit, Size available,
                        int scroll_bar_width, int step) {
  FormLayout layout = Form(dialog, unit, available, step).lay_out();
  if (layout.body.height <= available.height || scroll_bar_width == 0) return layout;
  available.width -= scroll_bar_width;
  return Form(dialog, unit, available, step).lay_out();
}

Rect popup_place(const Rect& wanted, Size whole) {
  const int width = std::min(wanted.width, whole.width);
  const int height = std::min(wanted.height, whole.height);
  return {std::clamp(wanted.x, 0, whole.width - width),
          std::clamp(wanted.y, 0, whole.height - height), width, height};
}

Rect sheet_place(const DialogTemplate& dialog, double unit, int frame_height, Size whole) {
  return place_sheet({&dialog}, unit, frame_height, whole);
}

Rect sheet_place(const std::vector<SheetPage>& pages, double unit, int frame_height, Size whole) {
  std::vector<const DialogTemplate*> forms;
  for (const SheetPage& page : pages) forms.push_back(&page.dialog);
  return place_sheet(forms, unit, frame_height, whole);
}

}  // namespace orvello
