// A page of notes: letters in the platform's rich edit, and ink over them. Text, styles and ink are
// kept here and taken back in one row of steps; the edit is what they are typed in. It stands in a
// view that clips it, and is scrolled past its text where the ink goes farther. A device has an ink
// control of its own for this (`handheld.h`).
#pragma once

#include <optional>

#include "hosts/shared/notes_history.h"
#include "hosts/win32/form_control.h"
#include "hosts/win32/form_scroll_bar.h"
#include "hosts/win32/notes_edit.h"

namespace orvello {

class NotesWindow;

// What clips the page.
class NotesView : public NativeWindow {
 public:
  explicit NotesView(NotesWindow& notes) : notes_(notes) {}
  bool create(HWND parent);

 protected:
  LRESULT message(UINT id, WPARAM wparam, LPARAM lparam) override;

 private:
  NotesWindow& notes_;
};

class NotesWindow : public FormControl, private NotesControl {
 public:
  NotesWindow(ControlTemplate made, const FormLook& look, const ControlSink& sink)
      : FormControl(std::move(made), look, sink),
        view_(*this),
        down_(look),
        sideways_(look, false) {}

  bool create(HWND parent) override;
  void put(const Rect& place) override;
  void show(bool shown) override;
  HWND focus_target() const override { return edit_.window(); }
  void put_caret(Caret caret) override;
  void look_changed() override;
  NotesControl* notes() override { return this; }
  bool uses_key(UINT key) const override { return key != VK_TAB && key != VK_ESCAPE; }

 protected:
  LRESULT control_message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  friend class NotesView;

  NotesContent content() const override;
  void set_content(const NotesContent& content) override;
  NotesTool tool() const override { return tool_; }
  void set_tool(NotesTool tool) override;
  NotesStyle style() const override;
  void set_style(const NotesStyle& style) override;
  bool can_undo() const override { return history_.can_undo(); }
  bool can_redo() const override { return history_.can_redo(); }
  bool undo() override { return move(&NotesHistory::undo); }
  bool redo() override { return move(&NotesHistory::redo); }

  // Letters.
  std::optional<LRESULT> edit_message(UINT message, WPARAM wparam, LPARAM lparam);
  std::optional<LRESULT> type(wchar_t unit);
  bool press_key(UINT key);
  bool press_letter(UINT key, bool shift);
  void press_return();
  bool leaves_list(bool back) const;
  void person_styles(const NotesStyle& style);
  void paste();
  void text_changed();
  void look_at_style();
  void show_state();
  NotesLetters letters() const;
  bool move(bool (NotesHistory::*step)(NotesState&));

  // Ink.
  bool take_pointer(HWND from, UINT message, WPARAM wparam, LPARAM lparam);
  bool take_pen(UINT message, WPARAM wparam);
  std::optional<LRESULT> pen_gestures() const;
  void press_pen(PagePoint at, double pressure);
  void drag_pen(PagePoint at, double pressure);
  void lift_pen();
  void erase(PagePoint from, PagePoint to);
  void set_ink(std::vector<NotesStroke> ink);
  PagePoint on_page(HWND from, POINT at) const;
  void draw_ink(HWND on, HRGN region) const;

  // The page.
  std::optional<LRESULT> view_message(UINT message, WPARAM wparam, LPARAM lparam);
  Rect room() const;  // inside of the edge, scroll bars included
  int text_height() const;
  void lay_out();
  void place_page();
  void scroll_to(int left, int top);
  void follow_edit();
  bool turn_wheel(int delta, bool sideways);
  void paint_edge();

  NotesView view_;
  NotesEdit edit_;
  FormScrollBar down_, sideways_;
  NotesTool tool_ = NotesTool::text;
  NotesText text_;
  NotesState now_;  // its text and runs are those of text_
  NotesHistory history_;
  NotesContent set_;  // as it was set, until a change
  bool touched_ = false;
  bool setting_ = false;
  bool return_done_ = false;  // its letter follows
  wchar_t half_ = 0;          // of a pair
  NotesStyle told_style_;

  bool erasing_ = false, held_ = false;
  std::optional<UINT32> pen_;  // which pointer holds, where that is known
  PagePoint last_;             // of the eraser
  NotesState before_erasing_;
  std::optional<NotesStroke> drawing_;

  bool bar_ = false;  // takes its room beside the page
  Size view_size_, page_;
  int wrap_ = 0;  // pixels
  int left_ = 0, top_ = 0;
};

}  // namespace orvello
