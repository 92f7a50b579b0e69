#include "hosts/win32/input_panel.h"

#include "hosts/win32/wide_text.h"

namespace orvello {

Win32InputPanel::~Win32InputPanel() {
  for (const auto& [name, library] : loaded_) FreeLibrary(library);
}

bool Win32InputPanel::load_library(TextView name) {
  if (!handheld_.is_here()) return true;
  const Text wanted(name);
  if (loaded_.contains(wanted)) return true;
  const HMODULE library = LoadLibraryW(wide(wanted));
  if (!library) return false;
  handheld_.start_ink(library);
  loaded_.emplace(wanted, library);
  return true;
}

void Win32InputPanel::free_library(TextView name) {
  if (const auto library = loaded_.extract(Text(name))) FreeLibrary(library.mapped());
}

// Not over what it is raised for: it would hide what is being written.
PanelAnswer Win32InputPanel::raise_input_panel(const Rect& beside) {
  const HWND window = GetActiveWindow();
  const auto place = handheld_.panel_place();
  if (!place) return PanelAnswer::raised;
  POINT corner{beside.x, beside.y};
  if (window) ClientToScreen(window, &corner);
  const Rect kept{static_cast<int>(corner.x), static_cast<int>(corner.y), beside.width,
                  beside.height};
  if (!intersection(*place, kept).empty()) {
    handheld_.hide_panel(window);
    return PanelAnswer::no_room;
  }
  handheld_.raise_panel(window);
  return PanelAnswer::raised;
}

void Win32InputPanel::hide_input_panel() { handheld_.hide_panel(GetActiveWindow()); }

}  // namespace orvello
