#include "hosts/win32/notes_edit.h"

#include <commctrl.h>
#include <richedit.h>

#include <algorithm>

#include "hosts/win32/form_look.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

constexpr DWORD kStyles = CFM_BOLD | CFM_ITALIC | CFM_UNDERLINE;
constexpr LONG kTwipsPerInch = 1440;

LONG twips(int pixels) {
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  return MulDiv(pixels, kTwipsPerInch, std::max(1, dpi));
}

CHARFORMAT2W format_of(const NotesStyle& style) {
  CHARFORMAT2W format{};
  format.cbSize = sizeof format;
  format.dwMask = kStyles;
  if (style.bold) format.dwEffects |= CFE_BOLD;
  if (style.italic) format.dwEffects |= CFE_ITALIC;
  if (style.underline) format.dwEffects |= CFE_UNDERLINE;
  return format;
}

// Of the platform's newer one, or the older; null: it has none. What is loaded stays: windows of
// its class may go last.
const wchar_t* edit_class() {
  if (LoadLibraryW(L"Msftedit.dll")) return L"RICHEDIT50W";
  return LoadLibraryW(L"Riched20.dll") ? L"RichEdit20W" : nullptr;
}

// Silent and still, until it goes.
class Quiet {
 public:
  explicit Quiet(HWND edit) : edit_(edit), mask_(SendMessageW(edit, EM_SETEVENTMASK, 0, 0)) {
    SendMessageW(edit_, WM_SETREDRAW, FALSE, 0);
  }
  ~Quiet() {
    SendMessageW(edit_, WM_SETREDRAW, TRUE, 0);
    SendMessageW(edit_, EM_SETEVENTMASK, 0, mask_);
    InvalidateRect(edit_, nullptr, TRUE);
  }
  Quiet(const Quiet&) = delete;
  Quiet& operator=(const Quiet&) = delete;

 private:
  HWND edit_;
  LRESULT mask_;
};

}  // namespace

bool NotesEdit::create(HWND parent) {
  const wchar_t* window_class = edit_class();
  if (!window_class) return false;
  Creation creation;
  creation.window_class = window_class;
  creation.style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | ES_MULTILINE | ES_AUTOVSCROLL |
                   ES_NOHIDESEL | ES_WANTRETURN;
  creation.place = {};
  creation.parent = parent;
  if (!create_control(creation)) return false;
  RevokeDragDrop(window());  // pictures and foreign styles
  SendMessageW(window(), EM_SETUNDOLIMIT, 0, 0);
  SendMessageW(window(), EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
  SendMessageW(window(), EM_SETEVENTMASK, 0, ENM_CHANGE | ENM_SELCHANGE);
  SendMessageW(window(), EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
  return true;
}

void NotesEdit::send_format(const NotesStyle& style, WPARAM scope) {
  const CHARFORMAT2W format = format_of(style);
  SendMessageW(window(), EM_SETCHARFORMAT, scope, reinterpret_cast<LPARAM>(&format));
}

// What looks like the platform's own format is text as well: it is put in place of a selection,
// which no format is looked for in.
void NotesEdit::write(const NotesText& text, const NotesLetters& letters) {
  const Quiet quiet(window());
  SetWindowTextW(window(), L"");
  SendMessageW(window(), EM_SETBKGNDCOLOR, 0, static_cast<LPARAM>(color_ref(letters.ground)));
  CHARFORMAT2W format = format_of({});
  format.dwMask |= CFM_FACE | CFM_SIZE | CFM_COLOR | CFM_CHARSET;
  format.yHeight = twips(letters.height);
  format.crTextColor = color_ref(letters.text);
  format.bCharSet = DEFAULT_CHARSET;
  lstrcpynW(format.szFaceName, L"Tahoma", LF_FACESIZE);
  SendMessageW(window(), EM_SETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&format));
  SendMessageW(window(), EM_SETCHARFORMAT, SCF_ALL, reinterpret_cast<LPARAM>(&format));
  set_bullets(0, 0, false, letters);
  Text shown = text.text();
  std::replace(shown.begin(), shown.end(), u'\0', u'\xFFFD');
  insert(shown);
  SendMessageW(window(), EM_SETCHARFORMAT, SCF_ALL, reinterpret_cast<LPARAM>(&format));
  for (const NotesRun& run : text.runs()) {
    NotesStyle letters_alone = run.style;
    letters_alone.bullet = false;
    if (letters_alone == NotesStyle{}) continue;
    select(run.start, run.start + run.length);
    send_format(run.style, SCF_SELECTION);
  }
  int start = 0;
  for (const Text& line : split(text.text(), u'\n')) {
    if (text.bullet_at(start)) set_bullets(start, start, true, letters);
    start += static_cast<int>(line.size()) + 1;
  }
  select(0, 0);
}

Text NotesEdit::text() const {
  GETTEXTLENGTHEX asked{GTL_NUMCHARS | GTL_PRECISE, 1200};
  const LRESULT length =
      SendMessageW(window(), EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&asked), 0);
  if (length <= 0) return {};
  Text text(static_cast<std::size_t>(length) + 1, u'\0');
  GETTEXTEX how{};
  how.cb = static_cast<DWORD>(text.size() * sizeof(char16_t));
  how.flags = GT_DEFAULT;
  how.codepage = 1200;
  const LRESULT got = SendMessageW(window(), EM_GETTEXTEX, reinterpret_cast<WPARAM>(&how),
                                   reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(std::clamp<LRESULT>(got, 0, length)));
  for (char16_t& unit : text)
    if (unit == u'\r' || unit == u'\v') unit = u'\n';
  return text;
}

NotesEdit::Selection NotesEdit::selection() const {
  CHARRANGE range{};
  SendMessageW(window(), EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
  return {static_cast<int>(range.cpMin), static_cast<int>(range.cpMax)};
}

void NotesEdit::select(int start, int end) {
  CHARRANGE range{start, end};
  SendMessageW(window(), EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
}

NotesStyle NotesEdit::typed_style() const {
  CHARFORMAT2W format{};
  format.cbSize = sizeof format;
  SendMessageW(window(), EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
  return {(format.dwEffects & CFE_BOLD) != 0, (format.dwEffects & CFE_ITALIC) != 0,
          (format.dwEffects & CFE_UNDERLINE) != 0, false};
}

void NotesEdit::set_letters_style(const NotesStyle& style) { send_format(style, SCF_SELECTION); }

void NotesEdit::set_bullets(int start, int end, bool bullets, const NotesLetters& letters) {
  const Selection before = selection();
  PARAFORMAT2 format{};
  format.cbSize = sizeof format;
  format.dwMask = PFM_NUMBERING | PFM_OFFSET | PFM_STARTINDENT;
  format.wNumbering = bullets ? PFN_BULLET : 0;
  format.dxOffset = bullets ? twips(letters.indent) : 0;
  const Quiet quiet(window());
  select(start, end);
  SendMessageW(window(), EM_SETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&format));
  select(before.start, before.end);
}

void NotesEdit::insert(TextView text) {
  const Text ended(text);
  SendMessageW(window(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(wide(ended)));
}

Point NotesEdit::place_of(int unit) const {
  POINTL place{};
  SendMessageW(window(), EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), unit);
  return {static_cast<int>(place.x), static_cast<int>(place.y)};
}

int NotesEdit::scrolled() const {
  POINT at{};
  SendMessageW(window(), EM_GETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&at));
  return static_cast<int>(at.y);
}

void NotesEdit::scroll_to(int pixels) {
  if (pixels == scrolled()) return;
  POINT at{0, pixels};
  SendMessageW(window(), EM_SETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&at));
}

LRESULT NotesEdit::message(UINT id, WPARAM wparam, LPARAM lparam) {
  if (first)
    if (const auto answer = first(id, wparam, lparam)) return *answer;
  if (id != WM_PAINT || !painted) return by_default(id, wparam, lparam);
  const OwnedGdi region(CreateRectRgn(0, 0, 0, 0));
  region_ = static_cast<HRGN>(region.get());
  GetUpdateRgn(window(), region_, FALSE);
  const LRESULT answer = by_default(id, wparam, lparam);
  painted();
  region_ = nullptr;
  return answer;
}

}  // namespace orvello
