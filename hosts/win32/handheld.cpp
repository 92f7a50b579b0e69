#include "hosts/win32/handheld.h"

#include "hosts/win32/painting.h"

namespace orvello {
namespace {

constexpr wchar_t kShell[] = L"aygshell.dll", kCore[] = L"coredll.dll";

// As the shell lays them out.
struct MenuBarRequest {
  DWORD size = sizeof(MenuBarRequest);
  HWND parent = nullptr;
  DWORD flags = 0;
  UINT tool_bar = 0;
  HINSTANCE resources = nullptr;
  int bitmap = 0;
  int images = 0;
  HWND made = nullptr;
  COLORREF background = 0;
};
struct DialogRequest {
  DWORD mask = 0;
  HWND dialog = nullptr;
  DWORD flags = 0;
};

constexpr DWORD kEmptyBar = 0x0001;
constexpr UINT kOverrideKey = WM_USER + 403;
constexpr LPARAM kNotifyOnly = MAKELPARAM(0x3, 0x3);  // to the window, without what it did before
constexpr WPARAM kSoftKeys[] = {0x70, 0x71};
constexpr DWORD kMaskFlags = 0x0001, kDoneButton = 0x0001, kSizeFullScreen = 0x0004;
constexpr DWORD kPanelOn = 0x0001;
enum PanelWish { kWishUp = 0, kWishDown = 1 };

void* look_up_in_system(const wchar_t* library, const char* name) {
  // Once loaded they stay: the shell's are never let go of.
  HMODULE module = GetModuleHandleW(library);
  if (!module) module = LoadLibraryW(library);
  return module ? reinterpret_cast<void*>(GetProcAddress(module, name)) : nullptr;
}

Handheld::Version version_of_system() {
  OSVERSIONINFOW info{};
  info.dwOSVersionInfoSize = sizeof info;
  constexpr DWORD kHandheldPlatform = 3;
  if (!GetVersionExW(&info) || info.dwPlatformId != kHandheldPlatform) return {};
  return {static_cast<int>(info.dwMajorVersion), static_cast<int>(info.dwMinorVersion)};
}

}  // namespace

struct Handheld::PanelInfo {
  DWORD size = sizeof(PanelInfo);
  DWORD flags = 0;
  RECT visible_desktop{}, panel{};
  DWORD method_size = 0;
  void* method = nullptr;
};

Handheld::Handheld() : version_(version_of_system()) {
  // A desktop may have libraries of these names that are something else.
  if (is_here()) look_up_ = look_up_in_system;
}

template <typename Call>
Call Handheld::entry(const wchar_t* library, const char* name) const {
  return look_up_ ? reinterpret_cast<Call>(look_up_(library, name)) : nullptr;
}

HWND Handheld::create_menu_bar(HWND window) const {
  const auto create = entry<BOOL(WINAPI*)(MenuBarRequest*)>(kShell, "SHCreateMenuBar");
  MenuBarRequest request;
  request.parent = window;
  request.flags = kEmptyBar;
  request.resources = GetModuleHandleW(nullptr);
  if (!create || !create(&request) || !request.made) return nullptr;
  for (const WPARAM key : kSoftKeys) SendMessageW(request.made, kOverrideKey, key, kNotifyOnly);
  return request.made;
}

int Handheld::soft_key(WPARAM key) const {
  if (!is_here()) return -1;
  return key == kSoftKeys[0] ? 0 : key == kSoftKeys[1] ? 1 : -1;
}

bool Handheld::fill_screen(HWND dialog) const {
  const auto init = entry<BOOL(WINAPI*)(DialogRequest*)>(kShell, "SHInitDialog");
  DialogRequest request{kMaskFlags, dialog, kDoneButton | kSizeFullScreen};
  return init && init(&request);
}

void Handheld::tell_activation(HWND window, WPARAM wparam, LPARAM lparam) {
  using Tell = BOOL(WINAPI*)(HWND, WPARAM, LPARAM, Activation*, DWORD flags);
  if (const auto tell = entry<Tell>(kShell, "SHHandleWMActivate"))
    tell(window, wparam, lparam, &activation_, 0);
}

void Handheld::tell_setting_change(HWND window, WPARAM wparam, LPARAM lparam) {
  using Tell = BOOL(WINAPI*)(HWND, WPARAM, LPARAM, Activation*);
  if (const auto tell = entry<Tell>(kShell, "SHHandleWMSettingChange"))
    tell(window, wparam, lparam, &activation_);
}

bool Handheld::ask_panel(PanelInfo& info) const {
  const auto ask = entry<BOOL(WINAPI*)(PanelInfo*)>(kCore, "SipGetInfo");
  return ask && ask(&info);
}

std::optional<Rect> Handheld::panel_place() const {
  PanelInfo info;
  if (!ask_panel(info)) return std::nullopt;
  return from_native(info.panel);
}

std::optional<Rect> Handheld::visible_desktop() const {
  PanelInfo info;
  if (!ask_panel(info) || !(info.flags & kPanelOn)) return std::nullopt;
  return from_native(info.visible_desktop);
}

bool Handheld::raise_panel(HWND window) const {
  const auto prefer = entry<BOOL(WINAPI*)(HWND, int)>(kShell, "SHSipPreference");
  if (prefer && prefer(window, kWishUp)) return true;
  const auto show = entry<BOOL(WINAPI*)(DWORD)>(kCore, "SipShowIM");
  return show && show(kPanelOn);
}

// At once: the shell's own preference waits for the next field.
void Handheld::hide_panel(HWND window) const {
  if (const auto prefer = entry<BOOL(WINAPI*)(HWND, int)>(kShell, "SHSipPreference"))
    prefer(window, kWishDown);
  if (const auto show = entry<BOOL(WINAPI*)(DWORD)>(kCore, "SipShowIM")) show(0);
}

void Handheld::start_ink(HMODULE library) const {
  for (const char* name : {"InitInkX", "InitRichInkDLL"})
    if (const FARPROC start = GetProcAddress(library, name))
      reinterpret_cast<void(WINAPI*)()>(reinterpret_cast<void*>(start))();
}

}  // namespace orvello
