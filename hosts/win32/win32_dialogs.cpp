#include "hosts/win32/win32_dialogs.h"

#include <algorithm>

#include "draw/form_layout.h"
#include "draw/mirrored.h"
#include "hosts/win32/modal_stage.h"
#include "hosts/win32/win32_dialog.h"
#include "hosts/win32/win32_sheet.h"

namespace orvello {
namespace {

FormLook::Settings settings_of(const Win32Density& density, bool right_to_left) {
  return {density.unit(), right_to_left, *density.colors};
}

Size own_size(const DialogTemplate& dialog, const FormWindow& form) {
  const Size design = design_size(dialog);
  return {form.look().scaled(design.width),
          form.look().scaled(design.height) + form.title_height()};
}

}  // namespace

Win32Dialogs::Win32Dialogs(Win32Window& window, LocaleData locale)
    : window_(window),
      locale_(std::move(locale)),
      views_(settings_of(window.density(), window.right_to_left()), locale_, window.fonts()),
      forms_(settings_of(window.form_density(), window.right_to_left()), locale_, window.fonts()) {}

void Win32Dialogs::take_looks() {
  views_.set(settings_of(window_.density(), window_.right_to_left()));
  forms_.set(settings_of(window_.form_density(), window_.right_to_left()));
}

// What only the program draws on a popup belongs to the view that it stands over.
FormLook& Win32Dialogs::look_of(const DialogTemplate& dialog) {
  take_looks();
  const bool drawn = std::all_of(dialog.controls.begin(), dialog.controls.end(),
                                 [](const ControlTemplate& control) {
                                   return control.kind == ControlTemplate::Kind::custom ||
                                          control.kind == ControlTemplate::Kind::report;
                                 });
  return dialog.popup && drawn ? views_ : forms_;
}

void Win32Dialogs::put(FormWindow& form, const ModalStage& stage) {
  take_looks();
  const DialogTemplate& dialog = form.shown_template();
  const Size room = stage.room();
  if (stage.is_own_window()) return form.put({0, 0, room.width, room.height}, false);
  const FormLook& look = form.look();
  if (!dialog.popup) {
    const Rect place = sheet_place(dialog, look.unit(), form.title_height(), room);
    const bool framed = place.width < room.width || place.height < room.height;
    return form.put(framed ? edged_place(place, look, room) : place, framed);
  }
  const Size design = design_size(dialog);
  Rect place = dialog.place;
  const Rect content = window_.content_area();
  if (place.empty()) {
    place.width = look.scaled(design.width);
    place.height = look.scaled(design.height);
    place.x = (room.width - place.width) / 2;
    place.y = (room.height - place.height) / 2;
  } else {
    if (look.right_to_left()) place = mirrored(place, content.width);
    place.x += content.x;
    place.y += content.y;
  }
  // The border is around it, so that the controls get all of the place.
  const int edge = form.border();
  form.put(
      popup_place({place.x - edge, place.y - edge, place.width + 2 * edge, place.height + 2 * edge},
                  room),
      false);
}

int Win32Dialogs::run_modal(const DialogTemplate& dialog, DialogProcedure& procedure) {
  const auto form = std::make_shared<FormWindow>(look_of(dialog), dialog, !dialog.popup);
  ModalStage stage(window_);
  if (!stage.create(dialog.title, own_size(dialog, *form)) || !form->create(stage.parent()))
    return 0;
  Win32Dialog controls(window_, form, procedure, make_event_queue(window_));
  controls.closed = [&stage](int) { stage.end(); };
  form->close_wanted = [&controls] { controls.close_wanted(); };
  put(*form, stage);
  controls.start();
  if (controls.is_closed()) return controls.result();
  ModalCover cover;
  cover.window = form->window();
  cover.close_wanted = [&controls] { controls.close_wanted(); };
  cover.resized = [this, &stage, raw = form.get()] { put(*raw, stage); };
  if (dialog.popup) {
    cover.lets_presses_through = dialog.press_goes_on;
    cover.pressed_beside = [&controls](POINT) { controls.tell(DialogEvent::Kind::focus_lost); };
    cover.released = [raw = form.get()](POINT screen) { raw->release_at(screen); };
  }
  stage.run(std::move(cover), [raw = form.get()] {
    raw->show();
    raw->come(true);
  });
  return controls.result();
}

std::unique_ptr<Dialog> Win32Dialogs::open_modeless(const DialogTemplate& dialog,
                                                    DialogProcedure& procedure) {
  if (!window_.frame()) return nullptr;
  take_looks();
  const auto form = std::make_shared<FormWindow>(views_, dialog, false);
  if (!form->create(window_.frame())) return nullptr;
  auto controls =
      std::make_unique<Win32Dialog>(window_, form, procedure, make_event_queue(window_));
  FormWindow* raw = form.get();
  raw->painted = [this] { window_.note_first_paint(); };
  raw->tab_left = [this, raw](bool back) { return window_.tab_out(raw->window(), back); };
  FormSlot slot;
  slot.window = raw->window();
  slot.place = [this, raw](const Rect& place) {
    take_looks();
    raw->put(place, false);
  };
  slot.take_tab = [raw](bool backwards) { return raw->focus_end(backwards); };
  window_.add_form(std::move(slot));
  controls->start();
  // Above the view and what stands there, below what is modal.
  SetWindowPos(raw->window(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  raw->show();
  window_.covers().keep_order();
  raw->come(false);
  return controls;
}

int Win32Dialogs::run_sheet(TextView title, const std::vector<SheetPage>& pages) {
  take_looks();
  if (pages.empty() || !window_.frame()) return kSheetFailed;
  Win32Sheet sheet(window_, forms_, Text(title), pages, [this] { take_looks(); });
  return sheet.run();
}

}  // namespace orvello
