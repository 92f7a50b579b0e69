#include "hosts/win32/system_look.h"

#include <windows.h>

#include <algorithm>
#include <optional>

#include "draw/readable.h"

namespace orvello {
namespace {

std::optional<DWORD> user_number(const wchar_t* key, const wchar_t* name) {
  DWORD value = 0, size = sizeof value;
  const LSTATUS read =
      RegGetValueW(HKEY_CURRENT_USER, key, name, RRF_RT_REG_DWORD, nullptr, &value, &size);
  if (read != ERROR_SUCCESS) return std::nullopt;
  return value;
}

bool has_high_contrast() {
  HIGHCONTRASTW contrast{};
  contrast.cbSize = sizeof contrast;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
         (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

Color system_color(int index) { return static_cast<Color>(GetSysColor(index)); }

LookColors contrast_colors() {
  LookColors colors;
  colors.ground = colors.field = system_color(COLOR_WINDOW);
  colors.text = colors.line = colors.edge = system_color(COLOR_WINDOWTEXT);
  colors.warning = colors.error = colors.text;
  colors.dim_text = legible_on(colors.field, system_color(COLOR_GRAYTEXT));
  colors.accent = colors.accent_down = system_color(COLOR_HIGHLIGHT);
  colors.accent_text = system_color(COLOR_HIGHLIGHTTEXT);
  colors.accent_tint = mixed(colors.field, colors.accent, 64);
  colors.hover = mixed(colors.field, colors.accent, 32);
  return colors;
}

}  // namespace

SystemLook read_system_look() {
  SystemLook look;
  constexpr DWORD kUsual = 100, kLargest = 225;  // percent
  const DWORD scale =
      user_number(L"Software\\Microsoft\\Accessibility", L"TextScaleFactor").value_or(kUsual);
  look.text_scale = std::clamp(scale, kUsual, kLargest) / 100.0;
  if (has_high_contrast()) {
    look.colors = contrast_colors();
    look.dark = is_dark(look.colors.ground);
    return look;
  }
  look.dark = user_number(L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                          L"AppsUseLightTheme") == 0u;
  look.colors = look.dark ? kDarkColors : kLightColors;
  return look;
}

}  // namespace orvello
