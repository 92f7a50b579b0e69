#include "resources/dialogs.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;

// 4 pixels between everything; buttons are 27 high, room for a finger.
constexpr int kGap = 4, kButton = 27, kWidth = 240;

}  // namespace

DialogTemplate day_view_dialog(Language language) {
  const auto text = [language](StringId id) { return load_string(id, language); };
  DialogTemplate dialog{kDialogDayView, text(StringId::day_view), true, {kWidth, 291}, {}};
  const int third = (kWidth - 4 * kGap) / 3, top = 291 - kGap - kButton;
  dialog.controls = {
      {Kind::label, kControlDayDate, {}, {kGap, kGap, kWidth - 2 * kGap, 20}},
      {Kind::list, kControlDayList, {}, {kGap, 28, kWidth - 2 * kGap, top - 28 - kGap}},
      {Kind::button,
       kControlPreviousDay,
       text(StringId::previous_day),
       {kGap, top, third, kButton}},
      {Kind::button, kControlToday, text(StringId::today), {2 * kGap + third, top, third, kButton}},
      {Kind::button,
       kControlNextDay,
       text(StringId::next_day),
       {3 * kGap + 2 * third, top, third, kButton}},
  };
  return dialog;
}

DialogTemplate day_popup_dialog(Language language) {
  constexpr int width = 208, height = 168;
  DialogTemplate dialog{
      kDialogDayPopup, load_string(StringId::day_view, language), false, {width, height}, {}};
  const int top = height - kGap - kButton;
  dialog.controls = {
      {Kind::label, kControlDayDate, {}, {kGap, kGap, width - 2 * kGap, 20}},
      {Kind::list, kControlDayList, {}, {kGap, 28, width - 2 * kGap, top - 28 - kGap}},
      {Kind::default_button,
       kControlOk,
       load_string(StringId::close, language),
       {width - kGap - 80, top, 80, kButton}},
  };
  return dialog;
}

DialogTemplate import_dialog(Language language) {
  const auto text = [language](StringId id) { return load_string(id, language); };
  constexpr int height = 291, top = height - kGap - kButton;
  DialogTemplate dialog{kDialogImport, text(StringId::import_title), true, {kWidth, height}, {}};
  dialog.controls = {
      {Kind::label, kControlImportText, {}, {kGap, kGap, kWidth - 2 * kGap, 36}},
      {Kind::list, kControlImportFiles, {}, {kGap, 44, kWidth - 2 * kGap, top - 44 - kGap}},
      {Kind::button, kControlCancel, text(StringId::cancel), {kGap, top, 88, kButton}},
      {Kind::default_button,
       kControlOk,
       text(StringId::import_ok),
       {kWidth - kGap - 88, top, 88, kButton}},
  };
  return dialog;
}

}  // namespace orvello
