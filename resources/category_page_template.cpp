#include "resources/category_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Across = ControlTemplate::Across;
using Down = ControlTemplate::Down;

constexpr int kHigh = 27, kPitch = 31, kMargin = 4, kInner = kSettingsPageWidth - 2 * kMargin;
constexpr int kFirstBar = kSettingsPageHeight - 3 * kPitch;  // the name, then two rows of buttons
constexpr int kLabelUnits = 29;

}  // namespace

DialogTemplate category_page_dialog(Language language) {
  const auto button = [language](int id, StringId text, Rect place, Across across) {
    return ControlTemplate{Kind::button, id, load_string(text, language), place, across,
                           Down::bottom, 2 /*section*/};
  };
  const auto third = [](int number, int bar) {
    return Rect{kMargin + 79 * number, kFirstBar + bar * kPitch, 74, kHigh};
  };
  DialogTemplate dialog;
  dialog.id = kDialogCategoryPage;
  dialog.title = load_string(StringId::tab_category, language);
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  ControlTemplate name{Kind::edit,      kCategoryPageName, {}, {kMargin, kFirstBar, kInner, kHigh},
                       Across::stretch, Down::bottom,      2};
  name.limit = kLabelUnits;
  dialog.controls = {
      {Kind::report,
       kCategoryPageList,
       {},
       {kMargin, kMargin, kInner, kFirstBar - 2 * kMargin},
       Across::stretch,
       Down::stretch,
       1},
      name,
      button(kCategoryPageAdd, StringId::category_add, third(0, 1), Across::keep),
      button(kCategoryPageRename, StringId::category_rename, third(1, 1), Across::center),
      button(kCategoryPageRemove, StringId::category_remove, third(2, 1), Across::right),
      {Kind::check_box,
       kCategoryPageUseColor,
       load_string(StringId::category_use_color, language),
       {kMargin, kFirstBar + 2 * kPitch, 140, kHigh},
       Across::keep,
       Down::bottom,
       2},
      button(kCategoryPageColor, StringId::category_color, third(2, 2), Across::right)};
  return dialog;
}

}  // namespace orvello
