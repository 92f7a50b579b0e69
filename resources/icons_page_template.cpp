#include "resources/icons_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Across = ControlTemplate::Across;
using Down = ControlTemplate::Down;

constexpr int kHigh = 27, kPitch = 31, kMargin = 4, kInner = kSettingsPageWidth - 2 * kMargin;
constexpr int kButton = 74, kNamed = 72;

Rect third(int number, int top) { return {kMargin + 79 * number, top, kButton, kHigh}; }

ControlTemplate grid_of(int id, StringId name, int bottom, Language language) {
  return {Kind::custom,
          id,
          load_string(name, language),
          {kMargin, kMargin, kInner, bottom - 2 * kMargin},
          Across::stretch,
          Down::stretch};
}

}  // namespace

DialogTemplate icons_page_dialog(Language language) {
  const auto text = [language](StringId id) { return load_string(id, language); };
  const int bar = kSettingsPageHeight - 2 * kPitch, last = bar + kPitch;
  DialogTemplate dialog;
  dialog.id = kDialogIconsPage;
  dialog.title = text(StringId::tab_icons);
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  dialog.controls = {grid_of(kIconsPageGrid, StringId::icons_slots, bar, language),
                     {Kind::label,
                      kIconsPageLabelText,
                      text(StringId::icons_label),
                      {kMargin, bar, kNamed, kHigh},
                      Across::keep,
                      Down::bottom},
                     {Kind::drop_list,
                      kIconsPageLabel,
                      {},
                      {kMargin + kNamed, bar, kInner - kNamed, kHigh},
                      Across::stretch,
                      Down::bottom},
                     {Kind::button, kIconsPageIcon, text(StringId::icons_choose), third(0, last),
                      Across::keep, Down::bottom},
                     {Kind::button, kIconsPageClear, text(StringId::icons_clear), third(1, last),
                      Across::center, Down::bottom},
                     {Kind::button, kIconsPageReset, text(StringId::icons_reset), third(2, last),
                      Across::right, Down::bottom}};
  return dialog;
}

DialogTemplate icon_choice_dialog(Language language) {
  const auto text = [language](StringId id) { return load_string(id, language); };
  constexpr int kHeight = 260, kLast = kHeight - kPitch;
  DialogTemplate dialog;
  dialog.id = kDialogIconChoice;
  dialog.title = text(StringId::icons_title);
  dialog.size = {kSettingsPageWidth, kHeight};
  dialog.controls = {grid_of(kIconChoiceGrid, StringId::icons_slots, kLast, language),
                     {Kind::button, kIconChoiceCancel, text(StringId::cancel), third(0, kLast),
                      Across::keep, Down::bottom},
                     {Kind::default_button, kIconChoiceOk, text(StringId::ok), third(2, kLast),
                      Across::right, Down::bottom}};
  return dialog;
}

}  // namespace orvello
