#include <algorithm>

#include "options/category_rules.h"
#include "options/color_picker.h"
#include "options/report_pen.h"
#include "options/settings_pages.h"
#include "ports/messages.h"
#include "resources/category_page_ids.h"
#include "settings/category_list.h"
#include "settings/category_props.h"
#include "settings/new_labels.h"
#include "store/device_labels.h"
#include "store/rename_label.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kRowHigh = 27, kSwatch = 17, kCellPad = 4;  // at 96 dpi

// What it does to labels is done at once, as it changes the device's list and the calendar; colours
// wait for OK.
class CategoryPage : public DialogProcedure {
 public:
  explicit CategoryPage(const OptionsContext& context) : context_(context) {}
  void handle(Dialog& dialog, const DialogEvent& event) override;

 private:
  const CategoryRow* picked() const {
    return row_ < 0 ? nullptr : &rows_[static_cast<std::size_t>(row_)];
  }
  LabelPlaces places() const {
    return {context_.settings, context_.host.registry, context_.volume,
            context_.platform_generation};
  }
  void read_labels();
  void show_rows(Dialog& dialog);
  ReportRow shown_row(const CategoryRow& row, ReportContent& content) const;
  Image swatch(const CategoryRow& row) const;
  void pick(Dialog& dialog, int row);
  void show_picked(Dialog& dialog);
  void show_name_buttons(Dialog& dialog);
  // The labels as they are now; that one is picked, if it is there.
  void come_to(Dialog& dialog, const Text& label);
  void list_event(Dialog& dialog, const DialogEvent& event);
  void list_key(Dialog& dialog, std::uint32_t key);
  void pressed(Dialog& dialog, int control);
  bool refuse(Dialog& dialog, const CategoryName& name, bool may_merge);
  void add(Dialog& dialog);
  void remove(Dialog& dialog);
  void rename(Dialog& dialog);
  bool person_merges(const Text& label, const Text& into);
  void tell_of_contacts(TextView label);
  void recolor(Dialog& dialog);
  void use_color(Dialog& dialog, bool used);
  void choose(Dialog& dialog, CategoryColor color);
  void apply();

  const OptionsContext& context_;
  std::vector<CategoryRow> rows_;
  std::vector<Text> unlisted_;  // added where no list keeps them
  ColorChoices choices_;
  int row_ = -1;
  bool seen_ = false;
  ReportPen pen_;
  bool twice_ = false;
};

void CategoryPage::handle(Dialog& dialog, const DialogEvent& event) {
  switch (event.kind) {
    case Event::page_shown:
      seen_ = true;
      come_to(dialog, picked() ? picked()->label : Text());
      return dialog.focus(rows_.empty() ? kCategoryPageName : kCategoryPageList);
    case Event::page_applied:
      return apply();
    case Event::command:
      return pressed(dialog, event.control);
    case Event::changed:
      if (event.control == kCategoryPageName) show_name_buttons(dialog);
      return;
    default:
      if (event.control == kCategoryPageList) list_event(dialog, event);
  }
}

void CategoryPage::read_labels() {
  std::vector<Text> labels, marked;
  if (read_device_labels(context_.volume, context_.platform_generation, context_.session, labels) &&
      context_.platform_generation != kListlessGeneration)
    marked = marked_categories(context_.volume);
  labels.insert(labels.end(), unlisted_.begin(), unlisted_.end());
  rows_ = category_page_rows(std::move(labels), context_.settings.category_props, marked, choices_,
                             context_.host.locale);
}

void CategoryPage::come_to(Dialog& dialog, const Text& label) {
  read_labels();
  row_ = row_of_label(rows_, label);
  if (row_ < 0 && !rows_.empty()) row_ = 0;
  show_rows(dialog);
  show_picked(dialog);
}

void CategoryPage::show_rows(Dialog& dialog) {
  const int dpi = context_.screen.dpi_y;
  const FormColors colors = context_.host.dialogs.colors();
  ReportContent content;
  content.font = context_.screen.fonts.normal9;
  content.bold_font = context_.screen.fonts.bold9;
  content.padding = kCellPad * dpi / 96;
  content.picture_column = 0;
  content.columns = {{(kSwatch + 2 * kCellPad) * dpi / 96, Align::center, {}},
                     {0, Align::left, {}}};
  content.background = colors.field;
  content.selected_background = colors.accent_tint;
  content.selected_text = colors.text;
  for (const CategoryRow& row : rows_) {
    ReportRow shown = shown_row(row, content);
    content.rows.push_back(std::move(shown));
  }
  if (rows_.empty()) {
    ReportRow& none = content.rows.emplace_back();
    none.cells = {{}, load_string(StringId::chooser_no_labels, context_.language())};
    none.height = kRowHigh * dpi / 96;
    none.background = colors.field;
    none.text = colors.dim_text;
  }
  dialog.report(kCategoryPageList)->set_content(std::move(content));
  if (row_ >= 0) pick(dialog, row_);
}

ReportRow CategoryPage::shown_row(const CategoryRow& row, ReportContent& content) const {
  const FormColors colors = context_.host.dialogs.colors();
  ReportRow shown;
  Text words = row.label;
  if (row.marked)
    words = format(load_string(StringId::category_marked, context_.language()), row.label);
  shown.cells = {{}, words};
  shown.name = row.uses_color()
                   ? words
                   : format(load_string(StringId::category_unused, context_.language()), words);
  shown.height = kRowHigh * context_.screen.dpi_y / 96;
  shown.background = colors.field;
  shown.text = row.marked ? colors.dim_text : colors.text;
  shown.pictures = {static_cast<int>(content.pictures.size())};
  content.pictures.push_back(swatch(row));
  return shown;
}

// A frame alone where the colour is not used.
Image CategoryPage::swatch(const CategoryRow& row) const {
  const FormColors colors = context_.host.dialogs.colors();
  const int dpi = context_.screen.dpi_y, side = kSwatch * dpi / 96, edge = std::max(1, dpi / 96);
  const Color own = row.color.color == kMagenta ? kMagenta - 1 : row.color.color;
  Image image{side, side, {}};
  for (int y = 0; y < side; ++y)
    for (int x = 0; x < side; ++x) {
      const bool inner = std::min({x, y, side - 1 - x, side - 1 - y}) >= edge;
      image.pixels.push_back(!inner ? colors.dim_text : row.uses_color() ? own : colors.field);
    }
  return image;
}

void CategoryPage::pick(Dialog& dialog, int row) {
  row_ = row;
  ReportList* list = dialog.report(kCategoryPageList);
  list->select({row});
  list->show_row(row);
}

void CategoryPage::show_picked(Dialog& dialog) {
  const CategoryRow* row = picked();
  dialog.set_text(kCategoryPageName, row ? TextView(row->label) : TextView());
  dialog.set_checked(kCategoryPageUseColor, row && row->uses_color());
  for (const int control : {kCategoryPageRemove, kCategoryPageUseColor, kCategoryPageColor})
    dialog.enable(control, row != nullptr);
  show_name_buttons(dialog);
}

void CategoryPage::show_name_buttons(Dialog& dialog) {
  const Text typed = label_of(dialog.text(kCategoryPageName));
  const bool another = !typed.empty() && !(picked() && picked()->label == typed);
  dialog.enable(kCategoryPageAdd, another);
  dialog.enable(kCategoryPageRename, another && picked());
}

void CategoryPage::list_event(Dialog& dialog, const DialogEvent& event) {
  if (event.kind == Event::key) return list_key(dialog, event.key);
  ReportList* list = dialog.report(kCategoryPageList);
  if (event.kind == Event::double_tap || event.kind == Event::pointer_down)
    twice_ = event.kind == Event::double_tap && list->row_at(event.point) == row_;
  const int row = pen_.tapped(*list, event, context_.screen.dpi_y);
  if (row < 0 || row >= static_cast<int>(rows_.size())) return;
  pick(dialog, row);
  show_picked(dialog);
  if (std::exchange(twice_, false)) recolor(dialog);
}

void CategoryPage::list_key(Dialog& dialog, std::uint32_t key) {
  if (!picked()) return;
  if (key == kKeyReturn) return recolor(dialog);
  if (key == kKeyDelete) return remove(dialog);
  if (key == kKeySpace) return use_color(dialog, !picked()->uses_color());
  const int high = dialog.report(kCategoryPageList)->row_place(row_).height;
  const int in_sight = dialog.place(kCategoryPageList).height / std::max(1, high);
  const auto to = walked_row(key, row_, static_cast<int>(rows_.size()), in_sight);
  if (!to) return;
  pick(dialog, *to);
  show_picked(dialog);
}

void CategoryPage::pressed(Dialog& dialog, int control) {
  switch (control) {
    case kCategoryPageAdd:
      return add(dialog);
    case kCategoryPageRemove:
      return remove(dialog);
    case kCategoryPageRename:
      return rename(dialog);
    case kCategoryPageColor:
      return recolor(dialog);
    case kCategoryPageUseColor:
      return use_color(dialog, dialog.checked(kCategoryPageUseColor));
    default:
      return;
  }
}

// True after saying what is wrong with the name.
bool CategoryPage::refuse(Dialog& dialog, const CategoryName& name, bool may_merge) {
  const Text fault = fault_text(name, may_merge, language_of(context_.host.boxes));
  if (fault.empty()) return name.fault == CategoryName::Fault::empty;
  context_.host.boxes.show(fault, load_string(StringId::box_error, context_.host.boxes),
                           BoxIcon::warning, BoxButtons::ok, true);
  dialog.focus(kCategoryPageName, Caret::all);
  return true;
}

void CategoryPage::add(Dialog& dialog) {
  const CategoryName name = category_name(rows_, dialog.text(kCategoryPageName), -1);
  if (refuse(dialog, name, false)) return;
  if (context_.platform_generation == kListlessGeneration) {
    unlisted_.push_back(name.label);
    give_label_colors(context_.volume, context_.settings.category_props, {name.label});
  } else {
    add_label(context_.volume, context_.settings.category_props, name.label);
  }
  come_to(dialog, name.label);
  dialog.focus(kCategoryPageName, Caret::all);
}

void CategoryPage::remove(Dialog& dialog) {
  const Text label = picked()->label;
  if (label == context_.settings.strdefcategory) {
    context_.host.boxes.show(
        u"Cannot remove the selected category, since it is being used as the default category in "
        u"'Settings->Options'",
        u"Error", BoxIcon::warning, BoxButtons::ok, true);
    return;
  }
  const auto unlisted = std::find(unlisted_.begin(), unlisted_.end(), label);
  if (unlisted != unlisted_.end())
    unlisted_.erase(unlisted);
  else if (removeCategory(context_.volume, label) != 1)
    return;
  forget_label(places(), label);
  choices_.erase(label);
  const int at = row_;
  read_labels();
  row_ = std::min(at, static_cast<int>(rows_.size()) - 1);
  show_rows(dialog);
  show_picked(dialog);
  dialog.focus(kCategoryPageList);
  context_.commands.reload_view();
}

void CategoryPage::rename(Dialog& dialog) {
  const Text label = picked()->label;
  const CategoryName name = category_name(rows_, dialog.text(kCategoryPageName), row_);
  if (refuse(dialog, name, true)) return;
  const bool merges = name.fault == CategoryName::Fault::taken;
  const Text into = merges ? rows_[static_cast<std::size_t>(name.taken)].label : name.label;
  if (into == label || (merges && !person_merges(label, into))) return;
  if (!rename_label(context_.operation(), places(), label, into)) return;
  std::replace(unlisted_.begin(), unlisted_.end(), label, into);
  if (auto choice = choices_.extract(label); choice && !merges) {
    choice.key() = into;
    choices_.insert(std::move(choice));
  }
  come_to(dialog, into);
  dialog.focus(kCategoryPageList);
  context_.commands.reload_view();
  tell_of_contacts(label);
}

bool CategoryPage::person_merges(const Text& label, const Text& into) {
  MessageBoxes& boxes = context_.host.boxes;
  return boxes.show(format(load_string(StringId::box_merge, boxes), into, label),
                    load_string(StringId::box_info, boxes), BoxIcon::warning,
                    BoxButtons::yes_no_losing, true) == BoxAnswer::yes;
}

// Contacts are the device's own, and keep the label, which stays in its list with them.
void CategoryPage::tell_of_contacts(TextView label) {
  const auto folder = context_.session.folder(kFolderContacts);
  const auto labels = folder ? folder->category_text() : std::nullopt;
  if (labels && categoryTextHasLabel(*labels, label))
    context_.host.boxes.show(
        format(load_string(StringId::box_contacts_keep, context_.host.boxes), Text(label)),
        load_string(StringId::box_info, context_.host.boxes), BoxIcon::none, BoxButtons::ok, true);
}

void CategoryPage::recolor(Dialog& dialog) {
  const CategoryRow row = *picked();
  const auto color = choose_color(context_, {row.label, row.color.color});
  // Who chooses a colour wants to see it.
  if (color) choose(dialog, {*color, row.color.flag & ~kCategoryColorUnused});
}

void CategoryPage::use_color(Dialog& dialog, bool used) {
  CategoryColor color = picked()->color;
  color.flag = used ? color.flag & ~kCategoryColorUnused : color.flag | kCategoryColorUnused;
  choose(dialog, color);
}

void CategoryPage::choose(Dialog& dialog, CategoryColor color) {
  CategoryRow& row = rows_[static_cast<std::size_t>(row_)];
  row.color = choices_[row.label] = color;
  show_rows(dialog);
  dialog.set_checked(kCategoryPageUseColor, row.uses_color());
}

// Who has seen the colours of labels without a record gets them.
void CategoryPage::apply() {
  std::vector<CategoryProp> fresh;
  bool changed = false;
  for (const CategoryRow& row : rows_) {
    const bool chosen = choices_.count(row.label) != 0;
    const auto color = static_cast<std::int32_t>(row.color.color);
    if (!row.stored && (chosen || (seen_ && !row.marked)))
      fresh.push_back({row.label, color, row.color.flag});
    else if (chosen)
      changed = saveCategoryProps(context_.volume, row.label, color,
                                  static_cast<std::int16_t>(row.color.flag)) ||
                changed;
  }
  if (!fresh.empty()) changed = addCategoryProps(context_.volume, fresh) || changed;
  choices_.clear();
  if (!changed) return;
  std::vector<CategoryProp> props;
  if (loadCategoryProps(context_.volume, props))
    context_.settings.category_props = std::move(props);
  context_.commands.reload_view();
}

}  // namespace

std::unique_ptr<DialogProcedure> make_category_page(const OptionsContext& context) {
  return std::make_unique<CategoryPage>(context);
}

}  // namespace orvello
