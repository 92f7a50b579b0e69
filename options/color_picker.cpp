#include "options/color_picker.h"

#include <algorithm>

#include "draw/readable.h"
#include "options/color_rules.h"
#include "ports/messages.h"
#include "resources/color_page_ids.h"
#include "resources/dialog_templates.h"
#include "settings/registry_access.h"
#include "settings/setting_table.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr TextView kPickerMode = u"colorpickerselectionmode";
constexpr int kRgbMode = 0, kPaletteMode = 1, kHsvMode = 2;
constexpr int kPicked = 1;
constexpr int kHsvSliders = 3;  // where those for hue, saturation and brightness begin
constexpr int kHighest[kPickerSliderCount] = {255, 255, 255, 359, 100, 100};

class PickerProcedure : public DialogProcedure {
 public:
  PickerProcedure(const OptionsContext& context, const ColorQuestion& question)
      : context_(context), question_(question), color_(question.color) {}
  void handle(Dialog& dialog, const DialogEvent& event) override;
  Color color() const { return color_; }

 private:
  void open(Dialog& dialog);
  void pressed(Dialog& dialog, int control);
  void set_mode(Dialog& dialog, int mode);
  void set_color(Dialog& dialog, Color color, int from);
  void show_sliders(Dialog& dialog);
  void slid(Dialog& dialog, int slider);
  void show_words(Dialog& dialog);
  void palette_event(Dialog& dialog, const DialogEvent& event);
  void palette_key(Dialog& dialog, std::uint32_t key);
  void tell_palette(Dialog& dialog, Size size);
  void paint_palette(Canvas& canvas, Size size);
  void paint_compare(Canvas& canvas, Size size);
  void finish(Dialog& dialog, int result);

  const OptionsContext& context_;
  const ColorQuestion& question_;
  Color color_;
  HsvColor hsv_;
  int mode_ = kPaletteMode;
  int stored_mode_ = kPaletteMode;
  int cell_ = 0;  // of the palette, that the keyboard stands on
  Size told_;     // how large the palette was when its parts were told
};

void PickerProcedure::handle(Dialog& dialog, const DialogEvent& event) {
  switch (event.kind) {
    case Event::init:
      return open(dialog);
    case Event::command:
      return pressed(dialog, event.control);
    case Event::changed:
      if (event.control == kPickerHex) {
        if (const auto typed = color_of_hex(dialog.text(kPickerHex)))
          set_color(dialog, *typed, kPickerHex);
      } else {
        slid(dialog, event.control - kPickerSliders);
      }
      return;
    case Event::focus_lost:
      // What was not a colour.
      if (event.control == kPickerHex) dialog.set_text(kPickerHex, hex_of(color_));
      return;
    case Event::paint:
      if (event.control == kPickerPalette) {
        if (event.size != told_) tell_palette(dialog, event.size);
        return paint_palette(*event.canvas, event.size);
      }
      return paint_compare(*event.canvas, event.size);
    case Event::close:
      return finish(dialog, 0);
    default:
      if (event.control == kPickerPalette) palette_event(dialog, event);
  }
}

void PickerProcedure::open(Dialog& dialog) {
  dialog.set_text(0, question_.title);
  stored_mode_ = stored_number(context_.host.registry, kPickerMode);
  for (int i = 0; i < kPickerSliderCount; ++i)
    dialog.range(kPickerSliders + i)->set_range(0, kHighest[i]);
  dialog.show(kPickerReset, question_.factory.has_value());
  dialog.enable(kPickerCompare, false);  // it is only looked at
  set_color(dialog, color_, 0);
  cell_ = std::max(0, palette_index_of(color_));
  set_mode(dialog, stored_mode_);
  dialog.focus(mode_ == kPaletteMode ? kPickerPalette
               : mode_ == kRgbMode   ? kPickerSliders
                                     : kPickerSliders + kHsvSliders);
}

void PickerProcedure::pressed(Dialog& dialog, int control) {
  switch (control) {
    case kPickerPaletteToggle:
      return set_mode(dialog, kPaletteMode);
    case kPickerRgbToggle:
      return set_mode(dialog, kRgbMode);
    case kPickerHsvToggle:
      return set_mode(dialog, kHsvMode);
    case kPickerReset:
      if (question_.factory) set_color(dialog, *question_.factory, 0);
      return;
    case kPickerOk:
      return finish(dialog, kPicked);
    case kPickerCancel:
      return finish(dialog, 0);
    default:
      return;
  }
}

void PickerProcedure::set_mode(Dialog& dialog, int mode) {
  mode_ = mode;
  dialog.set_checked(kPickerPaletteToggle, mode == kPaletteMode);
  dialog.set_checked(kPickerRgbToggle, mode == kRgbMode);
  dialog.set_checked(kPickerHsvToggle, mode == kHsvMode);
  dialog.set_step(mode == kPaletteMode ? kPickerPaletteStep
                  : mode == kRgbMode   ? kPickerRgbStep
                                       : kPickerHsvStep);
  const Rect place = dialog.place(kPickerPalette);
  if (mode == kPaletteMode) tell_palette(dialog, {place.width, place.height});
}

// `from`: the control that it comes from, which stays as the person left it.
void PickerProcedure::set_color(Dialog& dialog, Color color, int from) {
  color_ = color;
  const bool by_hue = from >= kPickerSliders + kHsvSliders && from < kPickerSliderValues;
  if (!by_hue) hsv_ = to_hsv(color, hsv_);
  if (const int known = palette_index_of(color); known >= 0) cell_ = known;
  if (from != kPickerHex) dialog.set_text(kPickerHex, hex_of(color));
  show_sliders(dialog);
  show_words(dialog);
  dialog.drawn(kPickerCompare)->invalidate();
  dialog.drawn(kPickerPalette)->invalidate();
  tell_palette(dialog, told_);
}

void PickerProcedure::show_sliders(Dialog& dialog) {
  const int values[kPickerSliderCount] = {red_of(color_), green_of(color_), blue_of(color_),
                                          hsv_.hue,       hsv_.saturation,  hsv_.brightness};
  for (int i = 0; i < kPickerSliderCount; ++i) {
    dialog.range(kPickerSliders + i)->set_position(values[i]);
    dialog.set_text(kPickerSliderValues + i, format(u"%d", values[i]));
  }
}

void PickerProcedure::slid(Dialog& dialog, int slider) {
  if (slider < 0 || slider >= kPickerSliderCount) return;
  const auto at = [&](int i) { return dialog.range(kPickerSliders + i)->position(); };
  Color color = rgb(at(0), at(1), at(2));
  if (slider >= kHsvSliders) {
    hsv_ = {at(kHsvSliders), at(kHsvSliders + 1), at(kHsvSliders + 2)};
    color = from_hsv(hsv_);
  }
  set_color(dialog, color, kPickerSliders + slider);
}

// The colour's name, or what speaks against it.
void PickerProcedure::show_words(Dialog& dialog) {
  const Text warning = question_.warning ? question_.warning(color_) : Text();
  const int known = palette_index_of(color_);
  dialog.set_text(kPickerWarning, warning);
  dialog.set_text(kPickerName, known < 0 ? Text() : palette_name(known, context_.language()));
  dialog.show(kPickerWarning, !warning.empty());
  dialog.show(kPickerName, warning.empty());
}

void PickerProcedure::palette_event(Dialog& dialog, const DialogEvent& event) {
  if (event.kind == Event::key) return palette_key(dialog, event.key);
  const bool touched = event.kind == Event::pointer_down || event.kind == Event::pointer_move ||
                       event.kind == Event::double_tap;
  if (!touched) return;
  const int cell = PaletteGrid(event.size).index_at(event.point);
  if (cell < 0) return;
  cell_ = cell;
  set_color(dialog, palette_colors()[static_cast<std::size_t>(cell)], kPickerPalette);
  if (event.kind == Event::double_tap) finish(dialog, kPicked);
}

void PickerProcedure::palette_key(Dialog& dialog, std::uint32_t key) {
  const PaletteGrid grid(told_);
  int cell = cell_;
  if (key == kKeyReturn) return finish(dialog, kPicked);
  if (key == kKeyLeft) cell = grid.moved(cell_, -1, 0);
  if (key == kKeyRight) cell = grid.moved(cell_, 1, 0);
  if (key == kKeyUp) cell = grid.moved(cell_, 0, -1);
  if (key == kKeyDown) cell = grid.moved(cell_, 0, 1);
  if (key == kKeyHome) cell = 0;
  if (key == kKeyEnd) cell = kPaletteColors - 1;
  if (cell == cell_ && key != kKeySpace) return;
  cell_ = cell;
  set_color(dialog, palette_colors()[static_cast<std::size_t>(cell)], kPickerPalette);
}

void PickerProcedure::tell_palette(Dialog& dialog, Size size) {
  told_ = size;
  const PaletteGrid grid(size);
  const int chosen = palette_index_of(color_);
  std::vector<AccessibleCell> cells;
  for (int i = 0; i < kPaletteColors; ++i)
    cells.push_back({palette_name(i, context_.language()), grid.cell(i), i == chosen});
  dialog.drawn(kPickerPalette)->set_parts(cells);
  dialog.drawn(kPickerCompare)
      ->set_parts({{load_string(StringId::picker_old, context_.language()) + u": " +
                        hex_of(question_.color),
                    {},
                    false},
                   {load_string(StringId::picker_new, context_.language()) + u": " + hex_of(color_),
                    {},
                    false}});
}

void PickerProcedure::paint_palette(Canvas& canvas, Size size) {
  const FormColors colors = context_.host.dialogs.colors();
  const int line = context_.screen.scale;
  const PaletteGrid grid(size);
  const int chosen = palette_index_of(color_);
  canvas.fill_rect({0, 0, size.width, size.height}, colors.ground);
  for (int i = 0; i < kPaletteColors; ++i) {
    const Rect cell = grid.cell(i).inset(line, line);
    const Color color = palette_colors()[static_cast<std::size_t>(i)];
    canvas.fill_rect(cell, color);
    canvas.frame_rect(cell, colors.line, line);
    if (i != cell_) continue;
    canvas.frame_rect(cell, colors.accent, (i == chosen ? 3 : 1) * line);
    if (i != chosen) continue;
    canvas.frame_rect(cell.inset(3 * line, 3 * line), is_dark(color) ? kWhite : kBlack, line);
  }
}

// The old colour on the left, the new one on the right, each with letters as they will be read.
void PickerProcedure::paint_compare(Canvas& canvas, Size size) {
  const Color line = context_.host.dialogs.colors().line;
  const int half = size.width / 2;
  const Rect places[] = {{0, 0, half, size.height}, {half, 0, size.width - half, size.height}};
  const Color shown[] = {question_.color, color_};
  const StringId names[] = {StringId::picker_old, StringId::picker_new};
  for (int i = 0; i < 2; ++i) {
    const Color partner = question_.partner.value_or(shown[i]);
    const Color ground = question_.is_text ? partner : shown[i];
    const Color text = question_.is_text               ? shown[i]
                       : question_.partner.has_value() ? partner
                       : is_dark(ground)               ? kWhite
                                                       : kBlack;
    canvas.fill_rect(places[i], ground);
    canvas.draw_text(load_string(names[i], context_.language()), places[i],
                     {context_.screen.fonts.bold9, text, Align::center});
  }
  canvas.frame_rect({0, 0, size.width, size.height}, line, context_.screen.scale);
}

void PickerProcedure::finish(Dialog& dialog, int result) {
  if (mode_ != stored_mode_) WriteNumberSetting(context_.host.registry, kPickerMode, mode_);
  FlushSettings(context_.host.registry);
  dialog.close(result);
}

}  // namespace

std::optional<Color> choose_color(const OptionsContext& context, const ColorQuestion& question) {
  PickerProcedure procedure(context, question);
  const DialogTemplate dialog = color_picker_dialog(context.language());
  if (context.host.dialogs.run_modal(dialog, procedure) != kPicked) return std::nullopt;
  return procedure.color();
}

}  // namespace orvello
