// The platform's rich edit, as far as a page of notes needs it: letters, their styles, bullets and
// the caret. What it holds is written and read as a whole; who keeps the truth is its owner. Places
// are UTF-16 units, a paragraph's end is one.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>

#include "base/geometry.h"
#include "hosts/shared/notes_text.h"
#include "hosts/win32/native_window.h"

namespace orvello {

struct NotesLetters {
  int height = 12;  // em, pixels
  int indent = 16;  // of a bulleted paragraph, pixels
  Color text = kBlack, ground = kWhite;
};

class NotesEdit : public NativeWindow {
 public:
  // False: the platform has no rich edit.
  bool create(HWND parent);

  // Before the edit itself; an answer ends it.
  std::function<std::optional<LRESULT>(UINT message, WPARAM wparam, LPARAM lparam)> first;
  std::function<void()> painted;  // with the region that was
  HRGN painted_region() const { return region_; }

  struct Selection {
    int start = 0, end = 0;
    bool empty() const { return start == end; }
  };

  void write(const NotesText& text, const NotesLetters& letters);
  Text text() const;
  Selection selection() const;
  void select(int start, int end);
  NotesStyle typed_style() const;                   // of the letter typed next; without a bullet
  void set_letters_style(const NotesStyle& style);  // of what is selected, or typed next
  void set_bullets(int start, int end, bool bullets, const NotesLetters& letters);
  void insert(TextView text);  // in the place of what is selected

  Point place_of(int unit) const;  // of a letter's upper left corner, in the edit
  int scrolled() const;            // pixels
  void scroll_to(int pixels);

 protected:
  LRESULT message(UINT id, WPARAM wparam, LPARAM lparam) override;

 private:
  void send_format(const NotesStyle& style, WPARAM scope);

  HRGN region_ = nullptr;
};

}  // namespace orvello
