#include "hosts/win32/win32_fonts.h"

#include <algorithm>

namespace orvello {

Win32Fonts::~Win32Fonts() {
  for (const Made& made : made_) DeleteObject(made.font);
}

HFONT Win32Fonts::font(const FontSpec& spec) {
  const std::lock_guard lock(lock_);
  for (const Made& made : made_)
    if (made.spec == spec) return made.font;
  const HFONT font =
      CreateFontW(-std::max(1, spec.height), 0, 0, 0, spec.weight >= 600 ? FW_BOLD : FW_NORMAL,
                  FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                  static_cast<DWORD>(spec.cleartype ? CLEARTYPE_QUALITY : DEFAULT_QUALITY),
                  VARIABLE_PITCH, L"Tahoma");
  // Without one, texts come in the platform's own; it is asked for again next time.
  if (!font) return static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
  made_.push_back({spec, font});
  return font;
}

}  // namespace orvello
