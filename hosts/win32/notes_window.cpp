// The letters of a page of notes; the page is in notes_page.cpp, its ink in notes_pen.cpp.
#include "hosts/win32/notes_window.h"

#include <commctrl.h>
#include <richedit.h>

#include <algorithm>

#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr wchar_t kNotesClass[] = L"OrvelloNotes", kNotesViewClass[] = L"OrvelloNotesView";
constexpr int kNotesText = 12;  // design units

bool is_high_half(wchar_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool is_low_half(wchar_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

Text clipboard_text(HWND window) {
  if (!OpenClipboard(window)) return {};
  Text text;
  if (const HANDLE kept = GetClipboardData(CF_UNICODETEXT)) {
    if (const auto* units = static_cast<const wchar_t*>(GlobalLock(kept))) {
      const std::size_t most = GlobalSize(kept) / sizeof(wchar_t);
      text = from_wide({units, wcsnlen(units, most)});
      GlobalUnlock(kept);
    }
  }
  CloseClipboard();
  return text;
}

// Line ends of every kind as one unit.
Text with_plain_ends(TextView text) {
  Text plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') continue;
    plain += text[i] == u'\r' ? u'\n' : text[i];
  }
  return plain;
}

}  // namespace

bool NotesView::create(HWND parent) {
  Creation creation;
  creation.window_class = kNotesViewClass;
  creation.style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN;
  creation.place = {};
  creation.parent = parent;
  return create_own(creation) != nullptr;
}

LRESULT NotesView::message(UINT id, WPARAM wparam, LPARAM lparam) {
  if (const auto answer = notes_.view_message(id, wparam, lparam)) return *answer;
  return by_default(id, wparam, lparam);
}

bool NotesWindow::create(HWND parent) {
  Creation creation;
  creation.window_class = kNotesClass;
  creation.style = WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN;
  creation.place = {};
  creation.parent = parent;
  creation.id = id();
  if (!create_own(creation) || !view_.create(window()) || !edit_.create(view_.window()) ||
      !down_.create(window()) || !sideways_.create(window()))
    return false;
  edit_.first = [this](UINT message, WPARAM wparam, LPARAM lparam) {
    return edit_message(message, wparam, lparam);
  };
  edit_.painted = [this] { draw_ink(edit_.window(), edit_.painted_region()); };
  down_.moved = [this](int position) { scroll_to(left_, position); };
  sideways_.moved = [this](int position) { scroll_to(position, top_); };
  now_.ink = std::make_shared<std::vector<NotesStroke>>();
  show_state();
  return true;
}

NotesLetters NotesWindow::letters() const {
  const LookColors& colors = look().colors();
  return {look().scaled(kNotesText), look().scaled(4 * kGrid), colors.text, colors.field};
}

void NotesWindow::look_changed() {
  now_.caret = edit_.selection().start;
  show_state();
}

NotesContent NotesWindow::content() const {
  if (!touched_) return set_;
  return {now_.text, now_.runs, *now_.ink, now_.width};
}

void NotesWindow::set_content(const NotesContent& content) {
  set_ = content;
  touched_ = false;
  history_.clear();
  drawing_.reset();
  text_.set(content.text, content.runs);
  now_ = {text_.text(), text_.runs(), std::make_shared<std::vector<NotesStroke>>(content.strokes),
          content.strokes.empty() ? 0 : content.width, 0};
  show_state();
  scroll_to(0, 0);
}

// As `text_` and `now_` say.
void NotesWindow::show_state() {
  const bool before = std::exchange(setting_, true);
  edit_.write(text_, letters());
  const int caret = std::min(now_.caret, text_.size());
  edit_.select(caret, caret);
  lay_out();
  follow_edit();
  setting_ = before;
  told_style_ = style();
}

void NotesWindow::put_caret(Caret caret) {
  if (caret == Caret::unchanged) return;
  const bool before = std::exchange(setting_, true);
  edit_.select(caret == Caret::all ? 0 : text_.size(), text_.size());
  setting_ = before;
  told_style_ = style();
  follow_edit();
}

NotesStyle NotesWindow::style() const {
  const NotesEdit::Selection selection = edit_.selection();
  if (!selection.empty()) return text_.style_of(selection.start);
  NotesStyle style = edit_.typed_style();
  style.bullet = text_.bullet_at(selection.start);
  return style;
}

void NotesWindow::set_style(const NotesStyle& style) {
  const bool was_setting = std::exchange(setting_, true);
  const NotesEdit::Selection selection = edit_.selection();
  NotesState before = now_;
  before.caret = selection.start;
  text_.set_style(selection.start, selection.end - selection.start, style);
  edit_.set_letters_style(style);
  edit_.set_bullets(selection.start, selection.end, style.bullet, letters());
  setting_ = was_setting;
  told_style_ = this->style();
  now_.runs = text_.runs();
  if (now_.runs == before.runs) return;  // only what is typed next is another
  touched_ = true;
  history_.note(std::move(before));
  lay_out();
}

void NotesWindow::look_at_style() {
  if (setting_ || style() == told_style_) return;
  told_style_ = style();
  tell(Event::taken);
}

// A person's change can be taken back.
void NotesWindow::text_changed() {
  if (setting_) return;
  const Text text = edit_.text();
  const int caret = edit_.selection().end;
  const TextChange change = change_between(text_.text(), text, caret);
  if (change.removed == 0 && change.inserted == 0) return;
  NotesState before = now_;
  const bool too_long = made().limit > 0 && text.size() > static_cast<std::size_t>(made().limit) &&
                        text.size() > text_.text().size();
  if (too_long) return show_state();
  text_.replace(change, text, edit_.typed_style());
  const bool lines =
      TextView(before.text)
          .substr(static_cast<std::size_t>(change.start), static_cast<std::size_t>(change.removed))
          .find(u'\n') != TextView::npos;
  const bool was_setting = std::exchange(setting_, true);
  // What is joined is of the first paragraph's kind, whatever the edit makes of it.
  if (lines)
    edit_.set_bullets(change.start, change.start, text_.bullet_at(change.start), letters());
  setting_ = was_setting;
  now_.text = text;
  now_.runs = text_.runs();
  now_.caret = caret;
  touched_ = true;
  const bool letter =
      change.removed == 0 && change.inserted == 1 && change.start == before.caret &&
      IsCharAlphaNumericW(static_cast<wchar_t>(text[static_cast<std::size_t>(change.start)]));
  history_.note(std::move(before), letter ? caret : -1);
  told_style_ = style();
  lay_out();
  follow_edit();
  tell(Event::changed);
}

bool NotesWindow::move(bool (NotesHistory::*step)(NotesState&)) {
  now_.caret = edit_.selection().start;
  if (!(history_.*step)(now_)) return false;
  touched_ = true;
  text_.set(now_.text, now_.runs);
  show_state();
  return true;
}

// Return on an empty line of a list, Backspace at the start of one.
bool NotesWindow::leaves_list(bool back) const {
  const NotesEdit::Selection caret = edit_.selection();
  if (!caret.empty() || !text_.bullet_at(caret.start)) return false;
  return back ? text_.starts_line(caret.start) : text_.is_empty_line(caret.start);
}

void NotesWindow::person_styles(const NotesStyle& style) {
  const std::vector<NotesRun> before = now_.runs;
  const NotesStyle style_before = this->style();
  set_style(style);
  if (now_.runs != before)
    tell(Event::changed);
  else if (this->style() != style_before)
    tell(Event::taken);
}

void NotesWindow::press_return() {
  NotesStyle plain = style();
  plain.bullet = false;
  if (leaves_list(false)) return person_styles(plain);
  now_.caret = edit_.selection().start;
  edit_.insert(u"\r");
}

void NotesWindow::paste() {
  const NotesEdit::Selection selection = edit_.selection();
  now_.caret = selection.start;
  Text text = with_plain_ends(clipboard_text(window()));
  if (made().limit > 0) {
    const int room = made().limit - (text_.size() - (selection.end - selection.start));
    text = cut(text, static_cast<std::size_t>(std::max(0, room)));
  }
  std::replace(text.begin(), text.end(), u'\n', u'\r');
  if (!text.empty()) edit_.insert(text);
}

// With Control: what is ours; what the edit has more of is not a page's.
bool NotesWindow::press_letter(UINT key, bool shift) {
  NotesStyle wanted = style();
  switch (key) {
    case 'A':
      edit_.select(0, text_.size());
      return true;
    case 'B':
      wanted.bold = !wanted.bold;
      return person_styles(wanted), true;
    case 'I':
      wanted.italic = !wanted.italic;
      return person_styles(wanted), true;
    case 'U':
      wanted.underline = !wanted.underline;
      return person_styles(wanted), true;
    case 'V':
      return paste(), true;
    case 'Y':
      if (redo()) tell(Event::changed);
      return true;
    case 'Z':
      if (shift ? redo() : undo()) tell(Event::changed);
      return true;
    default:
      // Letters and signs alone: arrows, Delete and the like are the edit's.
      return key != 'C' && key != 'X' && (key >= '0' && (key < VK_F1 || key >= VK_OEM_1)) &&
             key != VK_CONTROL;
  }
}

bool NotesWindow::press_key(UINT key) {
  now_.caret = edit_.selection().start;
  const bool control = is_key_held(VK_CONTROL) && !is_key_held(VK_MENU);
  const bool shift = is_key_held(VK_SHIFT);
  if (key == VK_RETURN) {
    return_done_ = true;
    return press_return(), true;
  }
  if (key == VK_BACK && leaves_list(true)) {
    NotesStyle plain = style();
    plain.bullet = false;
    return person_styles(plain), true;
  }
  if (key == VK_INSERT) {
    if (shift) paste();
    return shift || !control;  // over-typing is nobody's wish
  }
  return control && press_letter(key, shift);
}

// Both halves of a pair come one after the other, and go in together.
std::optional<LRESULT> NotesWindow::type(wchar_t unit) {
  if (unit == L'\r' || unit == L'\n') {
    if (!std::exchange(return_done_, false)) press_return();
    return 0;
  }
  if (unit < L' ' && unit != L'\b') return 0;
  if (is_high_half(unit)) {
    half_ = unit;
    return 0;
  }
  const wchar_t half = std::exchange(half_, wchar_t{});
  if (!is_low_half(unit)) return {};
  now_.caret = edit_.selection().start;
  const Text pair{static_cast<char16_t>(half), static_cast<char16_t>(unit)};
  if (half != 0) edit_.insert(pair);
  return 0;
}

std::optional<LRESULT> NotesWindow::edit_message(UINT message, WPARAM wparam, LPARAM lparam) {
  if (const auto answer = form_message(message, wparam, lparam)) return answer;
  switch (message) {
    case WM_KEYDOWN:
      if (press_key(static_cast<UINT>(wparam))) return 0;
      break;
    case WM_CHAR:
      return type(static_cast<wchar_t>(wparam));
    case WM_PASTE:
      paste();
      return 0;
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
      turn_wheel(GET_WHEEL_DELTA_WPARAM(wparam), message == WM_MOUSEHWHEEL);
      return 0;
    case kPenGestures:
      return pen_gestures();
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      history_.end_typing();
      InvalidateRect(window(), nullptr, FALSE);
      break;
    default:
      if (take_pointer(edit_.window(), message, wparam, lparam)) return 0;
      break;
  }
  return {};
}

std::optional<LRESULT> NotesWindow::view_message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_COMMAND:
      if (HIWORD(wparam) != EN_CHANGE) return {};
      text_changed();
      return 0;
    case WM_NOTIFY:
      if (reinterpret_cast<const NMHDR*>(lparam)->code != EN_SELCHANGE) return {};
      if (!setting_) follow_edit();
      look_at_style();
      return 0;
    case kPenGestures:
      return pen_gestures();
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT: {
      const OwnedGdi region(CreateRectRgn(0, 0, 0, 0));
      GetUpdateRgn(view_.window(), static_cast<HRGN>(region.get()), FALSE);
      PAINTSTRUCT painting{};
      const HDC screen = BeginPaint(view_.window(), &painting);
      FillRect(screen, &painting.rcPaint, look().brush(look().colors().field));
      EndPaint(view_.window(), &painting);
      draw_ink(view_.window(), static_cast<HRGN>(region.get()));
      return 0;
    }
    default:
      if (take_pointer(view_.window(), message, wparam, lparam)) return 0;
      return {};
  }
}

LRESULT NotesWindow::control_message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SETFOCUS:
      SetFocus(edit_.window());
      return 0;
    case WM_SIZE:
      lay_out();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      paint_edge();
      return 0;
    default:
      return by_default(message, wparam, lparam);
  }
}

}  // namespace orvello
