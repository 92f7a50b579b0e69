// The chooser: a list, a bar of letters above it and a bar for labels below it.
#include "resources/chooser_ids.h"
#include "resources/dialog_templates.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Across = ControlTemplate::Across;
using Down = ControlTemplate::Down;

constexpr int kChooserWidth = 240, kChooserHeight = 200, kFingerHigh = 27, kBarPitch = 31;
constexpr int kLastBar = kChooserHeight - kBarPitch;  // OK and Cancel
constexpr int kLabelLimit = 80;

}  // namespace

Rect chooser_list_place(bool letter_bar, bool label_bar) {
  const int top = 4 + (letter_bar ? 2 : 1) * kBarPitch;
  const int bottom = (label_bar ? kLastBar - kBarPitch : kLastBar) - 4;
  return {4, top, kChooserWidth - 8, bottom - top};
}

DialogTemplate chooser_dialog(Language language, bool attendees) {
  const auto text = [language](StringId id) { return load_string(id, language); };
  const auto column = [](int number, int top) {
    return Rect{4 + 59 * number, top, 55, kFingerHigh};
  };
  DialogTemplate dialog;
  dialog.id = kDialogChooser;
  dialog.title = attendees ? u"Attendees" : u"Categories";
  dialog.size = {kChooserWidth, kChooserHeight};
  dialog.controls = {
      {Kind::toggle, kControlLetterBarToggle, text(StringId::chooser_letter_bar), column(0, 4)},
      {Kind::toggle, kControlLabelBarToggle, u"+ / –", column(1, 4)},
      {Kind::button, kControlSelectAll, text(StringId::chooser_all), column(2, 4), Across::right},
      {Kind::button, kControlSelectNone, text(StringId::chooser_none), column(3, 4), Across::right},
      {Kind::custom,
       kControlLetterBar,
       text(StringId::chooser_letters),
       {0, 4 + kBarPitch, kChooserWidth, kFingerHigh},
       Across::stretch},
      {Kind::report,
       kControlChooserList,
       {},
       chooser_list_place(false, false),
       Across::stretch,
       Down::stretch}};
  dialog.controls[1].hidden = attendees;
  dialog.controls[4].hidden = true;
  if (!attendees) {
    const int top = kLastBar - kBarPitch;
    ControlTemplate label{Kind::edit,      kControlLabel, {}, {4, top, 114, kFingerHigh},
                          Across::stretch, Down::bottom};
    label.limit = kLabelLimit;
    ControlTemplate add{Kind::button,   kControlAddLabel, text(StringId::chooser_add),
                        column(2, top), Across::right,    Down::bottom};
    ControlTemplate remove{Kind::button,   kControlRemoveLabel, text(StringId::chooser_remove),
                           column(3, top), Across::right,       Down::bottom};
    for (ControlTemplate* control : {&label, &add, &remove}) {
      control->hidden = true;
      dialog.controls.push_back(*control);
    }
  }
  dialog.controls.push_back({Kind::button, kControlHeaderCancel, text(StringId::cancel),
                             column(0, kLastBar), Across::keep, Down::bottom});
  dialog.controls.push_back({Kind::default_button, kControlHeaderOk, text(StringId::ok),
                             column(3, kLastBar), Across::right, Down::bottom});
  return dialog;
}

}  // namespace orvello
