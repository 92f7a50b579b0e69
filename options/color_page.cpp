#include <algorithm>

#include "draw/fit_text.h"
#include "draw/readable.h"
#include "options/color_picker.h"
#include "options/color_rules.h"
#include "options/report_pen.h"
#include "options/settings_pages.h"
#include "ports/messages.h"
#include "resources/color_page_ids.h"
#include "settings/color_schemes.h"
#include "settings/registry_access.h"
#include "settings/setting_table.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr TextView kShownGroup = u"colorselectionmode";
constexpr int kColorGroups = 5;
constexpr StringId kGroupNames[kColorGroups] = {
    StringId::color_group_month, StringId::color_group_day, StringId::color_group_year,
    StringId::color_group_popup_schedule, StringId::color_group_popup_notes};
constexpr int kNarrowList = 200, kNarrowSwatch = 22;                               // likewise
constexpr int kSlotRow = 27, kSwatchWidth = 36, kSwatchHeight = 19, kCellGap = 5;  // at 96 dpi
enum ResetCommand : std::uint32_t { kResetSlot = 1, kResetGroup, kResetAll };

Image swatch(Size size, Color color, Color edge, int line) {
  // That one colour a picture leaves out.
  if (color == kMagenta) color = rgb(255, 0, 254);
  Image image{size.width, size.height, {}};
  for (int y = 0; y < size.height; ++y)
    for (int x = 0; x < size.width; ++x) {
      const bool inside = x >= line && y >= line && x < size.width - line && y < size.height - line;
      image.pixels.push_back(inside ? color : edge);
    }
  return image;
}

class ColorPage : public DialogProcedure {
 public:
  explicit ColorPage(const OptionsContext& context) : context_(context) {}
  void handle(Dialog& dialog, const DialogEvent& event) override;

 private:
  void open(Dialog& dialog);
  void show_group(Dialog& dialog, int group);
  void show_slots(Dialog& dialog);
  ReportContent slot_rows(const ReportPlace& place) const;
  FontSpec label_font(int room) const;
  void list_event(Dialog& dialog, const DialogEvent& event);
  void go_to(Dialog& dialog, int row);
  void edit(Dialog& dialog);
  void choose_scheme(Dialog& dialog);
  void reset(Dialog& dialog);
  std::uint32_t choose_from(Dialog& dialog, int button, const std::vector<MenuItem>& items);
  void paint(Canvas& canvas);
  void apply();

  Text string(StringId id) const { return load_string(id, context_.language()); }
  Color color_of(ColorSlot slot) const { return colors_[static_cast<std::size_t>(slot)]; }
  ColorSlot slot() const { return slots_[static_cast<std::size_t>(row_)]; }

  OptionsContext context_;
  ItemColors colors_{};  // a copy, until the sheet is confirmed
  int group_ = 0;
  std::vector<ColorSlot> slots_;  // of the group
  int row_ = 0;
  ReportPen pen_;
};

void ColorPage::handle(Dialog& dialog, const DialogEvent& event) {
  switch (event.kind) {
    case Event::init:
      return open(dialog);
    case Event::changed:
      if (event.control != kColorGroupList) return;
      show_group(dialog, dialog.choice(kColorGroupList)->selected());
      WriteNumberSetting(context_.host.registry, kShownGroup, group_);
      return;
    case Event::command:
      if (event.control == kColorSchemes) choose_scheme(dialog);
      if (event.control == kColorReset) reset(dialog);
      return;
    case Event::paint:
      return paint(*event.canvas);
    case Event::page_shown:  // as wide as it is seen
      return show_slots(dialog);
    case Event::page_applied:
      return apply();
    default:
      if (event.control == kColorSlotList) list_event(dialog, event);
  }
}

void ColorPage::open(Dialog& dialog) {
  colors_ = context_.settings.item_colors;
  std::vector<Text> names;
  for (const StringId name : kGroupNames) names.push_back(string(name));
  dialog.choice(kColorGroupList)->set_rows(names);
  const int group = stored_number(context_.host.registry, kShownGroup);
  dialog.choice(kColorGroupList)->select(group);
  dialog.enable(kColorPreview, false);  // it is only looked at
  show_group(dialog, group);
}

void ColorPage::show_group(Dialog& dialog, int group) {
  if (group < 0 || group >= kColorGroups) return;
  group_ = group;
  slots_ = slots_of_group(ColorGroup{group});
  row_ = 0;
  show_slots(dialog);
  dialog.drawn(kColorPreview)
      ->set_parts(
          {{string(StringId::color_preview) + u": " + string(kGroupNames[group]), {}, false}});
}

void ColorPage::show_slots(Dialog& dialog) {
  dialog.report(kColorSlotList)->set_content(slot_rows(dialog.report(kColorSlotList)->place()));
  go_to(dialog, row_);
  dialog.drawn(kColorPreview)->invalidate();
}

ReportContent ColorPage::slot_rows(const ReportPlace& place) const {
  const FormColors form = context_.host.dialogs.colors();
  const ScreenLayout& screen = context_.screen;
  const auto length = [&](int design) { return design * screen.dpi_y / 96; };
  const int rows = static_cast<int>(slots_.size()), gap = length(kCellGap);
  const bool scrolls = rows * length(kSlotRow) > place.size.height;
  const int width = place.size.width - 2 * place.border - (scrolls ? place.scroll_bar_width : 0);
  const bool narrow = width < length(kNarrowList);
  const Size size{length(narrow ? kNarrowSwatch : kSwatchWidth), length(kSwatchHeight)};
  const int texts = std::max(0, width - size.width - 2 * gap);
  ReportContent content;
  content.font = label_font(texts - 2 * gap);
  content.bold_font = screen.fonts.bold9;
  content.padding = gap;
  content.background = form.field;
  content.selected_background = form.accent_tint;
  content.selected_text = form.text;
  content.columns = {{size.width + 2 * gap, Align::center}, {texts, Align::left}};
  content.picture_column = 0;
  for (const ColorSlot slot : slots_) {
    const Color color = color_of(slot);
    const Text label(color_table()[static_cast<std::size_t>(slot)].label);
    const int known = palette_index_of(color);
    ReportRow row;
    row.cells = {{}, label};
    row.pictures = {static_cast<int>(content.pictures.size())};
    row.height = length(kSlotRow);
    row.background = form.field;
    row.text = form.text;
    row.name =
        label + u", " + (known < 0 ? hex_of(color) : palette_name(known, context_.language()));
    content.pictures.push_back(swatch(size, color, form.dim_text, screen.scale));
    content.rows.push_back(std::move(row));
  }
  return content;
}

// In which the longest label of all groups fits, as far as it can still be read.
FontSpec ColorPage::label_font(int room) const {
  std::vector<Text> labels;
  for (const ColorRow& row : color_table()) labels.emplace_back(row.label);
  const auto measure = context_.host.surfaces.create({1, 1});
  return fitting_font(measure->canvas(), labels, room, 9, 400, context_.screen);
}

void ColorPage::list_event(Dialog& dialog, const DialogEvent& event) {
  ReportList& list = *dialog.report(kColorSlotList);
  if (event.kind != Event::key) {
    const int row = pen_.tapped(list, event, context_.screen.dpi_y);
    if (row < 0) return;
    go_to(dialog, row);
    return edit(dialog);
  }
  if (event.key == kKeyReturn || event.key == kKeySpace) return edit(dialog);
  const int height = std::max(1, list.row_place(row_).height);
  const auto row = walked_row(event.key, row_, static_cast<int>(slots_.size()),
                              list.place().size.height / height);
  if (row) go_to(dialog, *row);
}

void ColorPage::go_to(Dialog& dialog, int row) {
  row_ = std::clamp(row, 0, static_cast<int>(slots_.size()) - 1);
  dialog.report(kColorSlotList)->select({row_});
  dialog.report(kColorSlotList)->show_row(row_);
}

void ColorPage::edit(Dialog& dialog) {
  const ColorSlot edited = slot();
  const ColorRow& row = color_table()[static_cast<std::size_t>(edited)];
  ColorQuestion question{Text(row.label), color_of(edited), row.factory};
  const ColorSlot partner = partner_of(edited);
  if (partner != edited) {
    question.partner = color_of(partner);
    question.is_text = std::ranges::any_of(
        text_pairs(), [&](const ColorPair& pair) { return pair.front == edited; });
  }
  question.warning = [&](Color color) {
    ItemColors tried = colors_;
    tried[static_cast<std::size_t>(edited)] = color;
    const auto pair = hard_to_read(tried, edited);
    if (!pair) return Text();
    const ColorSlot other = pair->front == edited ? pair->ground : pair->front;
    return format(string(StringId::picker_hard_to_read),
                  color_table()[static_cast<std::size_t>(other)].label);
  };
  const auto chosen = choose_color(context_, question);
  if (!chosen || *chosen == color_of(edited)) return;
  colors_[static_cast<std::size_t>(edited)] = *chosen;
  show_slots(dialog);
}

void ColorPage::choose_scheme(Dialog& dialog) {
  const auto schemes = color_schemes();
  const int shown = scheme_of(colors_);
  std::vector<MenuItem> items;
  for (std::size_t i = 0; i < schemes.size(); ++i)
    items.push_back({static_cast<std::uint32_t>(i + 1), string(schemes[i].name), true,
                     static_cast<int>(i) == shown});
  const std::uint32_t chosen = choose_from(dialog, kColorSchemes, items);
  if (chosen == 0) return;
  colors_ = schemes[chosen - 1].colors;
  show_slots(dialog);
}

void ColorPage::reset(Dialog& dialog) {
  const std::uint32_t chosen = choose_from(dialog, kColorReset,
                                           {{kResetSlot, string(StringId::color_reset_slot)},
                                            {kResetGroup, string(StringId::color_reset_group)},
                                            {kResetAll, string(StringId::color_reset_all)}});
  if (chosen == 0) return;
  for (int i = 0; i < kColorSlots; ++i) {
    const ColorRow& row = color_table()[static_cast<std::size_t>(i)];
    const bool meant = chosen == kResetAll ||
                       (chosen == kResetGroup && row.group == ColorGroup{group_}) ||
                       (chosen == kResetSlot && ColorSlot{i} == slot());
    if (meant) colors_[static_cast<std::size_t>(i)] = row.factory;
  }
  show_slots(dialog);
}

// 0: none.
std::uint32_t ColorPage::choose_from(Dialog& dialog, int button,
                                     const std::vector<MenuItem>& items) {
  return dialog.drawn(button)->track_menu(items, {0, dialog.place(button).height});
}

void ColorPage::paint(Canvas& canvas) {
  // The other settings may have changed meanwhile, on their pages.
  SettingsRecord settings = context_.settings;
  settings.item_colors = colors_;
  context_.commands.preview_colors(ColorGroup{group_}, settings, canvas);
}

void ColorPage::apply() {
  if (ChooseItemColors(context_.settings, context_.host.registry, colors_))
    context_.commands.reload_view();
}

}  // namespace

std::unique_ptr<DialogProcedure> make_color_page(const OptionsContext& context) {
  return std::make_unique<ColorPage>(context);
}

}  // namespace orvello
