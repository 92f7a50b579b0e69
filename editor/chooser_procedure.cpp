#include "editor/chooser_procedure.h"

#include <algorithm>
#include <cstdlib>

#include "editor/letter_bar_paint.h"
#include "ports/messages.h"
#include "settings/category_text.h"
#include "settings/registry_access.h"
#include "settings/setting_table.h"
#include "store/appointment_form.h"
#include "store/wait_cursor.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kChosen = 1;
constexpr TextView kLetterBarShown = u"abcbarshow", kLabelBarShown = u"adddeletebarshow";
constexpr int kRowHeight = 27, kCellPadding = 4;  // at 96 dpi
constexpr int kRoomForTitle = 240;                // of a form whose list has one column
constexpr int kTremble = 6;                       // how far a pen may slip on a row, at 96 dpi
constexpr int kToTheTop = -(1 << 28);

bool read_flag(Registry& registry, TextView name) { return stored_number(registry, name) == 1; }

}  // namespace

void ChooserProcedure::handle(Dialog& dialog, const DialogEvent& event) {
  switch (event.kind) {
    case Event::init:
      return open(dialog);
    case Event::command:
      return pressed(dialog, event.control);
    case Event::changed:
      if (event.control == kControlLabel) {
        const bool typed = !label_of(dialog.text(kControlLabel)).empty();
        enable_label_buttons(dialog, typed, typed);
      }
      return;
    case Event::close:
      return keep_bars();
    case Event::paint:
      paint_letter_bar(letters_, event.size, context_.screen, context_.host.dialogs.colors(),
                       *event.canvas);
      return;
    default:
      if (event.control == kControlLetterBar) bar_event(dialog, event);
      if (event.control == kControlChooserList) list_event(dialog, event);
  }
}

void ChooserProcedure::open(Dialog& dialog) {
  letter_bar_ = read_flag(context_.host.registry, kLetterBarShown);
  // Where there is nothing to choose, there is something to add.
  label_bar_ = labels_ && (rows_.empty() || read_flag(context_.host.registry, kLabelBarShown));
  dialog.set_checked(kControlLetterBarToggle, letter_bar_);
  dialog.set_checked(kControlLabelBarToggle, label_bar_);
  show_bars(dialog);
  enable_label_buttons(dialog, false, false);
  const WaitCursor waiting(context_.host.window);
  const auto first =
      std::find_if(rows_.begin(), rows_.end(), [](const auto& r) { return r.chosen; });
  row_ = rows_.empty() ? -1 : first == rows_.end() ? 0 : static_cast<int>(first - rows_.begin());
  show_rows(dialog);
  dialog.focus(kControlChooserList);
}

void ChooserProcedure::show_bars(Dialog& dialog) {
  dialog.show(kControlLetterBar, letter_bar_);
  for (const int control : {kControlLabel, kControlAddLabel, kControlRemoveLabel})
    dialog.show(control, label_bar_);
  dialog.set_place(kControlChooserList, chooser_list_place(letter_bar_, label_bar_));
}

void ChooserProcedure::show_rows(Dialog& dialog) {
  const int dpi = context_.screen.dpi_y;
  ReportContent content;
  content.font = context_.screen.fonts.normal9;
  content.bold_font = context_.screen.fonts.bold9;
  content.padding = kCellPadding * dpi / 96;
  const FormColors colors = context_.host.dialogs.colors();
  content.background = colors.field;
  content.selected_background = colors.accent_tint;
  content.selected_text = colors.text;
  const bool low = context_.screen.work.height < kRoomForTitle * dpi / 96;
  if (labels_)
    content.columns = {{0, Align::left, {}}, {0, Align::left, low ? u"" : u"Label"}};
  else
    content.columns = {{0, Align::left, {}},
                       {0, Align::left, u"Name"},
                       {0, Align::left, u"Email"},
                       {0, Align::left, u"Company"}};
  content.rows.reserve(rows_.size());
  for (const ChooserRow& row : rows_) {
    ReportRow& shown = content.rows.emplace_back();
    shown.cells = labels_ ? std::vector<Text>{{}, row.name}
                          : std::vector<Text>{{},  // as much as is kept of them
                                              cut(row.name, kAttendeeNameLength),
                                              cut(row.address, kAttendeeAddressLength),
                                              row.company};
    shown.background = colors.field;
    shown.text = colors.text;
    shown.height = kRowHeight * dpi / 96;
    shown.mark = row.chosen ? ReportMark::set : ReportMark::clear;
  }
  if (rows_.empty()) {
    const StringId none = labels_ ? StringId::chooser_no_labels : StringId::chooser_no_contacts;
    ReportRow& shown = content.rows.emplace_back();
    shown.cells = {{}, load_string(none, context_.language())};
    shown.height = kRowHeight * dpi / 96;
    shown.background = colors.field;
    shown.text = colors.dim_text;
  }
  dialog.report(kControlChooserList)->set_content(std::move(content));
  letters_.set_rows(rows_);
  std::vector<AccessibleCell> cells;
  const Rect bar = dialog.place(kControlLetterBar);
  for (int i = 0; i < kLetterCells; ++i)
    cells.push_back({Text(letters_.label(i)), letter_cell(i, {bar.width, bar.height})});
  dialog.drawn(kControlLetterBar)->set_parts(cells);
  dialog.drawn(kControlLetterBar)->invalidate();
  if (row_ >= static_cast<int>(rows_.size())) row_ = static_cast<int>(rows_.size()) - 1;
  if (row_ >= 0) go_to(dialog, row_);
}

void ChooserProcedure::pressed(Dialog& dialog, int control) {
  switch (control) {
    case kControlLetterBarToggle:
    case kControlLabelBarToggle:
      letter_bar_ = dialog.checked(kControlLetterBarToggle);
      label_bar_ = labels_ && dialog.checked(kControlLabelBarToggle);
      return show_bars(dialog);
    case kControlSelectAll:
      return mark_all(dialog, true);
    case kControlSelectNone:
      return mark_all(dialog, false);
    case kControlAddLabel:
      return add_label(dialog);
    case kControlRemoveLabel:
      return remove_label(dialog);
    case kControlHeaderOk:
      return finish(dialog);
    case kControlHeaderCancel:
      keep_bars();
      return dialog.close(0);
    default:
      return;
  }
}

void ChooserProcedure::bar_event(Dialog& dialog, const DialogEvent& event) {
  if (event.kind == Event::pointer_down || event.kind == Event::double_tap)
    return pick_letter(dialog, letter_cell_at(event.point.x, event.size));
  if (event.kind != Event::key) return;
  if (event.key == kKeyLeft || event.key == kKeyRight) {
    const int by = event.key == kKeyRight ? 1 : kLetterCells - 1;
    key_cell_ = (std::max(0, letters_.cell()) + by) % kLetterCells;
    return pick_letter(dialog, key_cell_);
  }
  if (event.key == kKeySpace) pick_letter(dialog, std::max(0, letters_.cell()));
  if (event.key == kKeyReturn) finish(dialog);
}

void ChooserProcedure::pick_letter(Dialog& dialog, int cell) {
  const WaitCursor searching(context_.host.window);
  const char16_t symbol = letters_.tap(cell);
  dialog.drawn(kControlLetterBar)->invalidate();
  const int row = first_row_of(rows_, symbol);
  if (row < 0) return;
  // At the list's top, as far as there are rows enough below it.
  ReportList* list = dialog.report(kControlChooserList);
  list->scroll_by(kToTheTop);
  list->scroll_by(list->row_place(row).y - list->row_place(0).y);
  row_ = row;
  list->select({row});
}

void ChooserProcedure::list_event(Dialog& dialog, const DialogEvent& event) {
  ReportList* list = dialog.report(kControlChooserList);
  switch (event.kind) {
    case Event::pointer_down:
    case Event::double_tap:
      pen_ = event.point;
      pen_row_ = list->gliding() ? -1 : list->row_at(event.point);  // what stops it chooses nothing
      speed_.begin(event.point.y, event.time);
      return;
    case Event::pointer_move: {
      if (!pen_) return;
      speed_.move(event.point.y, event.time);
      const int moved = event.point.y - pen_->y;
      if (pen_row_ >= 0 && std::abs(moved) <= kTremble * context_.screen.dpi_y / 96) return;
      pen_row_ = -1;
      list->scroll_by(-moved);
      pen_ = event.point;
      return;
    }
    case Event::pointer_up:
      if (pen_ && pen_row_ < 0) list->glide(-speed_.at_release(event.time));
      pen_.reset();
      if (pen_row_ >= 0 && pen_row_ < static_cast<int>(rows_.size())) toggle(dialog, pen_row_);
      pen_row_ = -1;
      return;
    case Event::key:
      return list_key(dialog, event.key);
    default:
      return;
  }
}

void ChooserProcedure::list_key(Dialog& dialog, std::uint32_t key) {
  if (key == kKeyReturn) return finish(dialog);
  if (rows_.empty()) return;
  const int last = static_cast<int>(rows_.size()) - 1;
  const Rect place = dialog.place(kControlChooserList);
  const int row_height = dialog.report(kControlChooserList)->row_place(row_).height;
  const int page = std::max(1, place.height / std::max(1, row_height) - 1);
  switch (key) {
    case kKeySpace:
      return toggle(dialog, row_);
    case kKeyUp:
      return go_to(dialog, row_ - 1);
    case kKeyDown:
      return go_to(dialog, row_ + 1);
    case kKeyPageUp:
      return go_to(dialog, row_ - page);
    case kKeyPageDown:
      return go_to(dialog, row_ + page);
    case kKeyHome:
      return go_to(dialog, 0);
    case kKeyEnd:
      return go_to(dialog, last);
    default:
      return;
  }
}

void ChooserProcedure::go_to(Dialog& dialog, int row) {
  row_ = std::clamp(row, 0, static_cast<int>(rows_.size()) - 1);
  ReportList* list = dialog.report(kControlChooserList);
  list->select({row_});
  list->show_row(row_);
}

void ChooserProcedure::toggle(Dialog& dialog, int row) {
  ChooserRow& tapped = rows_[static_cast<std::size_t>(row)];
  tapped.chosen = !tapped.chosen;
  dialog.report(kControlChooserList)
      ->set_mark(row, tapped.chosen ? ReportMark::set : ReportMark::clear);
  go_to(dialog, row);
  if (!label_bar_) return;
  dialog.set_text(kControlLabel, tapped.name);
  enable_label_buttons(dialog, true, true);
}

void ChooserProcedure::mark_all(Dialog& dialog, bool chosen) {
  ReportList* list = dialog.report(kControlChooserList);
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    rows_[i].chosen = chosen;
    list->set_mark(static_cast<int>(i), chosen ? ReportMark::set : ReportMark::clear);
  }
}

void ChooserProcedure::add_label(Dialog& dialog) {
  const Text label = label_of(dialog.text(kControlLabel));
  const bool added = labels_->add(label, rows_);
  const auto row =
      std::find_if(rows_.begin(), rows_.end(), [&](const auto& one) { return one.name == label; });
  if (row != rows_.end()) row_ = static_cast<int>(row - rows_.begin());
  show_rows(dialog);
  if (added) {
    dialog.set_text(kControlLabel, {});
    enable_label_buttons(dialog, false, false);
  }
  dialog.focus(kControlLabel, Caret::all);
}

void ChooserProcedure::remove_label(Dialog& dialog) {
  if (labels_->remove(dialog.text(kControlLabel), rows_)) show_rows(dialog);
  dialog.set_text(kControlLabel, {});
  enable_label_buttons(dialog, false, false);
  dialog.focus(kControlChooserList);
}

void ChooserProcedure::enable_label_buttons(Dialog& dialog, bool add, bool remove) {
  dialog.enable(kControlAddLabel, add);
  dialog.enable(kControlRemoveLabel, remove);
}

void ChooserProcedure::finish(Dialog& dialog) {
  if (labels_ && chosen_categories(rows_).size() > kCategoriesLength) {
    context_.host.boxes.show(load_string(StringId::box_many_categories, context_.language()),
                             load_string(StringId::box_warning, context_.language()),
                             BoxIcon::warning);
    return;
  }
  keep_bars();
  dialog.close(kChosen);
}

void ChooserProcedure::keep_bars() {
  WriteNumberSetting(context_.host.registry, kLetterBarShown, letter_bar_);
  if (labels_) WriteNumberSetting(context_.host.registry, kLabelBarShown, label_bar_);
  FlushSettings(context_.host.registry);
}

}  // namespace orvello
