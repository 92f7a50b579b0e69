#include "resources/import_templates.h"

#include <algorithm>

#include "resources/ids.h"
#include "resources/import_ids.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Across = ControlTemplate::Across;
using Down = ControlTemplate::Down;

constexpr int kGap = 4, kButton = 27, kRow = 27, kWidth = 240, kInner = kWidth - 2 * kGap;
constexpr int kHeight = 291, kLine = 17, kMostLines = 4, kFrame = 6,
              kButtons = kHeight - kGap - kButton;
constexpr int kMostRows = 4, kMostRowsWhenLow = 2;

}  // namespace

ImportPlaces import_places(int lines, int rows, bool low) {
  const Rect counts{kGap, kGap, kInner, kLine * std::clamp(lines, 1, kMostLines) + 2};
  const int shown = std::clamp(rows, 1, low ? kMostRowsWhenLow : kMostRows);
  const Rect files{kGap, counts.bottom() + kGap, kInner, shown * kRow + kFrame};
  const int top = rows > 0 ? files.bottom() + kGap : files.y;
  return {counts, files, {kGap, top, kInner, kButtons - kGap - top}};
}

DialogTemplate import_dialog(Language language) {
  const auto text = [language](StringId id) { return load_string(id, language); };
  const ImportPlaces places = import_places(2, kMostRowsWhenLow, true);
  DialogTemplate dialog;
  dialog.id = kDialogImport;
  dialog.title = text(StringId::import_title);
  dialog.size = {kWidth, kHeight};
  dialog.controls = {
      {Kind::label, kControlImportText, {}, places.counts, Across::stretch},
      {Kind::report, kControlImportFiles, text(StringId::import_calendars), places.files,
       Across::stretch},
      {Kind::report, kControlImportItems, text(StringId::import_items), places.items,
       Across::stretch, Down::stretch},
      {Kind::button,
       kControlCancel,
       text(StringId::cancel),
       {kGap, kButtons, 88, kButton},
       Across::keep,
       Down::bottom},
      {Kind::default_button,
       kControlOk,
       text(StringId::import_ok),
       {kWidth - kGap - 88, kButtons, 88, kButton},
       Across::right,
       Down::bottom},
  };
  return dialog;
}

DialogTemplate progress_dialog(TextView title, Language language) {
  constexpr int width = 216, inner = width - 2 * kGap, bar = 32, buttons = bar + 12 + 2 * kGap;
  DialogTemplate dialog;
  dialog.id = kDialogProgress;
  dialog.title = Text(title);
  dialog.full_screen = false;
  dialog.size = {width, buttons + kButton + kGap};
  dialog.controls = {
      {Kind::label, kControlProgressText, {}, {kGap, kGap, inner, 24}, Across::stretch},
      {Kind::custom, kControlProgressBar, {}, {kGap, bar, inner, 12}, Across::stretch},
      {Kind::default_button,
       kControlCancel,
       load_string(StringId::import_stop, language),
       {width - kGap - 104, buttons, 104, kButton},
       Across::right},
  };
  return dialog;
}

}  // namespace orvello
