#include "hosts/win32/win32_fonts.h"

#include <algorithm>

namespace orvello {
namespace {

HFONT make_font(const FontSpec& spec, const wchar_t* family) {
  return CreateFontW(-std::max(1, spec.height), 0, 0, 0, spec.weight >= 600 ? FW_BOLD : FW_NORMAL,
                     FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                     static_cast<DWORD>(spec.cleartype ? CLEARTYPE_QUALITY : DEFAULT_QUALITY),
                     VARIABLE_PITCH, family);
}

bool is_there(const wchar_t* family) {
  const HDC dc = CreateCompatibleDC(nullptr);
  const HFONT font = make_font({}, family);
  const HGDIOBJ before = SelectObject(dc, font);
  wchar_t face[LF_FACESIZE] = {};
  GetTextFaceW(dc, LF_FACESIZE, face);
  SelectObject(dc, before);
  DeleteObject(font);
  DeleteDC(dc);
  return lstrcmpiW(face, family) == 0;
}

const wchar_t* first_family() {
  constexpr const wchar_t* kTahoma = L"Tahoma";
  for (const wchar_t* name : {kTahoma, L"DejaVu Sans Condensed", L"DejaVu Sans"})
    if (is_there(name)) return name;
  return kTahoma;  // for the platform to replace
}

}  // namespace

Win32Fonts::~Win32Fonts() {
  for (const Made& made : made_) DeleteObject(made.font);
}

HFONT Win32Fonts::font(const FontSpec& spec) {
  const std::lock_guard lock(lock_);
  for (const Made& made : made_)
    if (made.spec == spec) return made.font;
  if (!family_) family_ = first_family();
  const HFONT font = make_font(spec, family_);
  // Without one, texts come in the platform's own; it is asked for again next time.
  if (!font) return static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
  made_.push_back({spec, font});
  return font;
}

}  // namespace orvello
