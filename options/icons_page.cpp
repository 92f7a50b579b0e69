#include <algorithm>
#include <optional>

#include "options/icon_choice.h"
#include "options/icon_paint.h"
#include "options/settings_pages.h"
#include "resources/icons_page_ids.h"
#include "settings/category_text.h"
#include "settings/icon_picture.h"
#include "settings/setting_table.h"
#include "store/device_labels.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

class IconsPage : public DialogProcedure {
 public:
  explicit IconsPage(const OptionsContext& context) : context_(context) {
    grid_.set_count(kDisplayIconSlots);
  }
  void handle(Dialog& dialog, const DialogEvent& event) override;

 private:
  struct Slot {
    std::int32_t icon = 0;
    Text label;
    bool changed = false;
  };
  Slot& chosen() { return slots_[static_cast<std::size_t>(grid_.chosen())]; }
  std::optional<std::vector<Text>> device_labels();
  void take_slots();
  void drop_gone(const std::vector<Text>& listed);
  void show_labels(Dialog& dialog);
  void show_slots(Dialog& dialog);
  void show_chosen(Dialog& dialog);
  void paint(Dialog& dialog, const DialogEvent& event);
  void pressed(Dialog& dialog, int control);
  void set(Slot& slot, std::int32_t icon, const Text& label);
  void clear(int slot);
  void choose_picture(Dialog& dialog);
  void apply();

  const OptionsContext& context_;
  CellGrid grid_;
  Size size_;
  std::array<Slot, kDisplayIconSlots> slots_;
  std::vector<Text> listed_;  // by the device, when the page was shown last
  std::vector<Text> labels_;  // to choose from: the first two stand for none, and for no category
};

void IconsPage::handle(Dialog& dialog, const DialogEvent& event) {
  if (event.kind == Event::page_shown) {
    show_labels(dialog);
    dialog.focus(kIconsPageGrid);
    return show_slots(dialog);
  }
  if (event.kind == Event::page_applied) return apply();
  if (event.kind == Event::command) return pressed(dialog, event.control);
  if (event.kind == Event::taken && event.control == kIconsPageLabel) {
    const int row = dialog.choice(kIconsPageLabel)->selected();
    if (row < 0) return;
    set(chosen(), chosen().icon, labels_[static_cast<std::size_t>(row)]);
    return show_slots(dialog);
  }
  if (event.control != kIconsPageGrid) return;
  if (event.kind == Event::paint) return paint(dialog, event);
  switch (grid_.handle(event, icon_grid_tremble(context_.screen))) {
    case CellGrid::Act::nothing:
      return;
    case CellGrid::Act::opened:
      return choose_picture(dialog);
    case CellGrid::Act::moved:
    case CellGrid::Act::chosen:
      return show_slots(dialog);
  }
}

// What was not changed here is as the settings have it now: another page may have renamed a label.
void IconsPage::take_slots() {
  for (std::size_t i = 0; i < slots_.size(); ++i)
    if (!slots_[i].changed)
      slots_[i] = {context_.settings.displayicon[i], context_.settings.displayiconstring[i], false};
}

// Nothing when they could not all be read, which has been told.
std::optional<std::vector<Text>> IconsPage::device_labels() {
  std::vector<Text> listed;
  if (!read_device_labels(context_.volume, context_.platform_generation, context_.session, listed))
    return std::nullopt;
  for (Text& label : listed) label = label_of(label);
  return listed;
}

// A label that was renamed or removed after it was chosen here, on the Category page.
void IconsPage::drop_gone(const std::vector<Text>& listed) {
  const auto lists = [](const std::vector<Text>& labels, const Text& label) {
    return std::find(labels.begin(), labels.end(), label) != labels.end();
  };
  for (Slot& slot : slots_)
    if (slot.changed && lists(listed_, slot.label) && !lists(listed, slot.label))
      slot.changed = false;
}

void IconsPage::show_labels(Dialog& dialog) {
  const auto read = device_labels();
  if (read) drop_gone(*read);
  take_slots();
  if (read) listed_ = *read;
  std::vector<Text> listed = listed_;
  // What is bound stays to be chosen, even if the device does not list it.
  for (const Slot& slot : slots_) listed.push_back(slot.label);
  const auto before = [this](const Text& a, const Text& b) {
    const int order = context_.host.locale.compare(a, b);
    return order != 0 ? order < 0 : a < b;
  };
  std::sort(listed.begin(), listed.end(), before);
  listed.erase(std::unique(listed.begin(), listed.end()), listed.end());
  labels_ = {Text(), Text(kNoCategory)};
  for (Text& label : listed)
    if (!label.empty() && label != kNoCategory) labels_.push_back(std::move(label));
  std::vector<Text> rows = labels_;
  rows.front() = load_string(StringId::icons_unbound, context_.language());
  dialog.choice(kIconsPageLabel)->set_rows(rows);
}

void IconsPage::show_slots(Dialog& dialog) {
  std::vector<AccessibleCell> parts;
  for (int i = 0; i < kDisplayIconSlots; ++i) {
    const Text& label = slots_[static_cast<std::size_t>(i)].label;
    const StringId name = label.empty() ? StringId::icons_cell : StringId::icons_cell_bound;
    parts.push_back({format(load_string(name, context_.language()), i + 1, label), grid_.place(i),
                     i == grid_.chosen()});
  }
  dialog.drawn(kIconsPageGrid)->set_parts(parts);
  dialog.drawn(kIconsPageGrid)->invalidate();
  show_chosen(dialog);
}

void IconsPage::show_chosen(Dialog& dialog) {
  const auto row = std::find(labels_.begin(), labels_.end(), chosen().label);
  dialog.choice(kIconsPageLabel)->select(static_cast<int>(row - labels_.begin()));
}

void IconsPage::paint(Dialog& dialog, const DialogEvent& event) {
  if (size_ != event.size) {
    size_ = event.size;
    grid_.lay_out(size_, icon_cell_side(context_.screen), true);
    grid_.choose(grid_.chosen());
    show_slots(dialog);
  }
  std::vector<IconCell> cells;
  for (const Slot& slot : slots_)
    cells.push_back({icon_picture(context_.settings, slot.icon), slot.label});
  paint_icon_cells(context_, grid_, cells, event.size, *event.canvas);
}

void IconsPage::pressed(Dialog& dialog, int control) {
  if (control == kIconsPageIcon) return choose_picture(dialog);
  if (control == kIconsPageClear) clear(grid_.chosen());
  if (control == kIconsPageReset)
    for (int slot = 0; slot < kDisplayIconSlots; ++slot) clear(slot);
  show_slots(dialog);
}

void IconsPage::set(Slot& slot, std::int32_t icon, const Text& label) {
  if (slot.icon == icon && slot.label == label) return;
  slot = {icon, label, true};
}

// As it is where nothing was ever chosen.
void IconsPage::clear(int slot) { set(slots_[static_cast<std::size_t>(slot)], slot, {}); }

void IconsPage::choose_picture(Dialog& dialog) {
  const auto icon = choose_icon(context_, chosen().icon);
  if (icon) set(chosen(), *icon, chosen().label);
  show_slots(dialog);
}

void IconsPage::apply() {
  if (std::none_of(slots_.begin(), slots_.end(), [](const Slot& slot) { return slot.changed; }))
    return;
  if (const auto read = device_labels()) drop_gone(*read);
  bool changed = false;
  for (int slot = 0; slot < kDisplayIconSlots; ++slot) {
    const auto at = static_cast<std::size_t>(slot);
    if (!std::exchange(slots_[at].changed, false)) continue;
    context_.settings.displayicon[at] = slots_[at].icon;
    save_setting(context_.host.registry, context_.settings, u"displayicon%d", slot);
    context_.settings.displayiconstring[at] = slots_[at].label;
    save_setting(context_.host.registry, context_.settings, u"displayiconstring%d", slot);
    changed = true;
  }
  if (changed) context_.commands.reload_view();
}

}  // namespace

std::unique_ptr<DialogProcedure> make_icons_page(const OptionsContext& context) {
  return std::make_unique<IconsPage>(context);
}

}  // namespace orvello
