// The windows of one dialog template: a title strip when it is modal, and the controls on a body
// that scrolls when it is higher than there is room for.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/shared/focus_told.h"
#include "hosts/win32/form_control.h"
#include "hosts/win32/form_scroll_bar.h"
#include "hosts/win32/frame_button.h"
#include "hosts/win32/native_window.h"

namespace orvello {

class FormWindow;

// A form's or a sheet's place in a room that it does not fill, with the line around it.
Rect edged_place(const Rect& place, const FormLook& look, Size room);

// The part that is seen of the body, and the body.
class FormGround : public NativeWindow {
 public:
  FormGround(FormWindow& form, const FormLook& look) : form_(form), look_(look) {}
  bool create(HWND parent);

 protected:
  LRESULT message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  FormWindow& form_;
  const FormLook& look_;
};

class FormWindow : public NativeWindow {
 public:
  // `look` outlives the form. Without a title it is edge to edge; a popup has a border.
  FormWindow(const FormLook& look, const DialogTemplate& dialog, bool titled);
  ~FormWindow() override;
  // Hidden, with all its controls; false: one of them could not be made.
  bool create(HWND parent);

  // What the person does. `report` tells paints at once, other input behind what waits.
  std::function<void(DialogEvent::Kind, int control)> tell;
  std::function<void(const DialogEvent&)> report;
  std::function<void(const std::function<void()>&)> behind;  // when all that waits has been told
  std::function<void()> close_wanted;                        // none: it is modeless
  std::function<void()> accept_wanted;      // Return, without a default button to press
  std::function<bool(bool back)> tab_left;  // Tab behind the last control; false: round
  std::function<void(int by)> turn_wanted;  // to another page of a sheet
  std::function<void(int timer)> ticked;
  std::function<void()> session_ending;  // the person signs out
  std::function<void()> painted;
  std::function<bool()> covered;
  std::function<void(HWND)> give_focus;
  std::function<std::uint32_t(HWND, const std::vector<MenuItem>&, POINT)> track_menu;

  const DialogTemplate& shown_template() const { return template_; }
  FormControl* control(int id) const;  // null: none
  const FormLook& look() const { return look_; }
  const Text& title() const { return template_.title; }
  void set_title(const Text& title);
  int title_height() const;
  int border() const;    // around the controls
  bool press_default();  // false: there is none to press
  void set_checked(int id, bool checked);
  void set_enabled(int id, bool enabled);
  void set_shown(int id, bool shown);
  void set_step(int step);
  // All of it. It is still there: whoever was pressed on it goes on telling of that.
  void set_seen(bool seen);
  void set_place(int id, const Rect& place);  // as in the template
  void put(const Rect& place, bool framed);   // in the parent's client area
  void show();
  void hide();
  // Nothing for a control that cannot take it; 0: none has it.
  void focus(int id, Caret caret = Caret::unchanged);
  int focused() const { return focus_.control(); }
  // It is seen from now on, with the focus where it was wanted; else, if it needs one, on the first
  // control.
  void come(bool needs_focus);
  void go() { focus_.go(); }
  // The first or the last control; false: none takes the focus.
  bool focus_end(bool last);
  void release_at(POINT screen);
  // What a person sees and can use.
  bool is_seen(int id) const;
  bool is_enabled(int id) const;
  // On the screen; a person scrolls to it.
  RECT place_on_screen(int id) const;
  void bring_in_sight(int id);

 protected:
  LRESULT message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  friend class FormGround;
  struct Made {
    std::unique_ptr<FormControl> control;  // null: there is none of its kind
    bool shown = true;
    bool enabled = true;
    bool seen = false;
  };
  using Kind = ControlTemplate::Kind;

  void make_sink();
  bool make(const ControlTemplate& made, const Text& label);
  void lay_out();
  void scroll_to(int x, int y);
  void paint(HDC given);
  std::optional<LRESULT> reflect(UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT ground_message(FormGround& ground, UINT message, WPARAM wparam, LPARAM lparam);
  void tell_of(DialogEvent::Kind kind, int id);
  bool is_choice(int id) const;
  int index_of(int id) const;  // -1: none
  const ControlTemplate& made_as(std::size_t at) const { return template_.controls[at]; }
  bool is_on_step(std::size_t at) const;
  bool can_focus(std::size_t at) const;
  bool is_tab_stop(std::size_t at) const;
  int first_focus() const;
  void keep_seen();
  bool take_key(int id, UINT key);
  bool take_letter(int id, wchar_t letter);
  void move_focus(bool back);
  bool choose_radio(int id, UINT key);

  const FormLook& look_;
  DialogTemplate template_;
  bool titled_;
  bool framed_ = false;
  int generation_;  // of the look that the controls have
  bool seen_ = true;
  bool shown_ = false;
  int step_ = 0;
  Size body_size_;
  Rect bar_place_;
  Point scrolled_{};
  ControlSink sink_;
  FormGround view_, body_;
  FormScrollBar bar_;
  FrameButton close_;
  std::vector<Made> made_;  // by position in the template
  FocusTold focus_;
  int left_ = -1;  // where the focus was before none had it
};

}  // namespace orvello
