#include "options/icon_choice.h"

#include "options/icon_paint.h"
#include "resources/icons_page_ids.h"
#include "resources/settings_templates.h"
#include "settings/icon_picture.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

class IconChoice : public DialogProcedure {
 public:
  IconChoice(const OptionsContext& context, int shown) : context_(context) {
    for (int number = 0; number < context.settings.total_icon_count; ++number)
      cells_.push_back({icon_picture(context.settings, number), {}});
    grid_.set_count(static_cast<int>(cells_.size()));
    grid_.choose(shown);
  }
  int chosen() const { return grid_.chosen(); }

  void handle(Dialog& dialog, const DialogEvent& event) override {
    if (event.kind == Event::init) {
      dialog.enable(kIconChoiceOk, !cells_.empty());
      dialog.focus(kIconChoiceGrid);
      return tell_parts(dialog);
    }
    if (event.kind == Event::command) return dialog.close(event.control == kIconChoiceOk ? 1 : 0);
    if (event.control != kIconChoiceGrid) return;
    if (event.kind == Event::paint) return paint(dialog, event);
    switch (grid_.handle(event, icon_grid_tremble(context_.screen))) {
      case CellGrid::Act::nothing:
        return;
      case CellGrid::Act::opened:
        return dialog.close(1);
      case CellGrid::Act::moved:
      case CellGrid::Act::chosen:
        dialog.drawn(kIconChoiceGrid)->invalidate();
        tell_parts(dialog);
    }
  }

 private:
  void paint(Dialog& dialog, const DialogEvent& event) {
    if (size_ != event.size) {
      size_ = event.size;
      grid_.lay_out(size_, icon_cell_side(context_.screen), false);
      grid_.choose(grid_.chosen());
      tell_parts(dialog);
    }
    paint_icon_cells(context_, grid_, cells_, event.size, *event.canvas);
  }
  void tell_parts(Dialog& dialog) {
    std::vector<AccessibleCell> parts;
    for (int cell = 0; cell < static_cast<int>(cells_.size()); ++cell)
      parts.push_back({format(load_string(StringId::icons_cell, context_.language()), cell + 1),
                       grid_.place(cell), cell == grid_.chosen()});
    dialog.drawn(kIconChoiceGrid)->set_parts(parts);
  }

  const OptionsContext& context_;
  std::vector<IconCell> cells_;
  CellGrid grid_;
  Size size_;
};

}  // namespace

std::optional<int> choose_icon(const OptionsContext& context, int shown) {
  IconChoice choice(context, shown);
  const int result = context.host.dialogs.run_modal(icon_choice_dialog(context.language()), choice);
  if (result != 1) return std::nullopt;
  return choice.chosen();
}

}  // namespace orvello
