// The base of every control on a form. It is a window of the platform's, or of ours, that stands on
// the form's body as its child; the form shows, places and enables it, and owns the focus rules. A
// control tells its form what a person does through the sink, and never what the program did.
//
// A kind of control implements create(), and what of the rest it has a use for.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "hosts/win32/form_look.h"
#include "hosts/win32/native_window.h"
#include "hosts/win32/pen_input.h"
#include "ports/dialog.h"

namespace orvello {

// All of it is called on the user-interface thread and outlives the controls. What is told may be
// handled at once and end the form: a control touches nothing of itself after report() and tell().
struct ControlSink {
  // command, changed and taken: queued.
  std::function<void(DialogEvent::Kind, int control)> tell;
  // Paints, at once; pointer, wheel, context menu and keys, at once behind what waits.
  std::function<void(const DialogEvent&)> report;
  // The control, or a window inside of it, has got the platform's focus.
  std::function<void(int control)> focused;
  // A key that the control has no use for: Tab, Return, Escape, arrows of radio buttons. True: done
  // with. `key` is the platform's.
  std::function<bool(int control, UINT key)> key_left;
  // What is typed on a control that takes no text.
  std::function<bool(int control, wchar_t letter)> letter_left;
  // A press or the wheel must not reach the control: something modal stands above its form.
  std::function<bool()> covered;
  // Runs a menu at a point of the screen and waits for the choice; 0: none.
  std::function<std::uint32_t(const std::vector<MenuItem>&, POINT screen)> track_menu;
  // A press or turn of the wheel that the control has no use for scrolls the form.
  std::function<void(int pixels)> scroll_form;
  PenReader pen;  // may be empty
};

class FormControl : public NativeWindow {
 public:
  // The look and the sink outlive the control.
  FormControl(ControlTemplate made, const FormLook& look, const ControlSink& sink)
      : made_(std::move(made)), look_(look), sink_(sink) {}

  // Makes the window, hidden, as a child with the control's id; false: it could not be made.
  virtual bool create(HWND parent) = 0;

  int id() const { return made_.id; }
  ControlTemplate::Kind kind() const { return made_.kind; }
  const ControlTemplate& made() const { return made_; }

  // Pixels of the parent, mirrored already where the screen runs from the right. Forms are laid out
  // often, and moving a window to where it stands costs as much as moving it elsewhere.
  virtual void put(const Rect& place);
  virtual void show(bool shown) { ShowWindow(window(), shown ? SW_SHOWNA : SW_HIDE); }
  virtual void enable(bool enabled) { EnableWindow(window(), enabled); }
  virtual HWND focus_target() const { return window(); }
  virtual bool takes_focus() const { return true; }
  virtual void put_caret(Caret) {}
  // What a screen reader calls it, where that is not its text.
  virtual void set_name(const Text& name) { name_ = name; }
  const Text& name() const { return name_; }
  // Fonts or colours are new.
  virtual void look_changed();

  // As Dialog has them. Silent.
  virtual Text text() const { return {}; }
  virtual void set_text(TextView) {}
  virtual bool checked() const { return false; }
  virtual void set_checked(bool) {}
  // Whether the last change was typing, which is never taken.
  virtual bool is_typed() const { return false; }
  virtual bool is_dropped_down() const { return false; }
  virtual void close_drop() {}

  // Of those that the kind has; they live as long as the control.
  virtual ChoiceControl* choice() { return nullptr; }
  virtual ListControl* list() { return nullptr; }
  virtual DateControl* date() { return nullptr; }
  virtual RangeControl* range() { return nullptr; }
  virtual NotesControl* notes() { return nullptr; }
  virtual ReportList* report() { return nullptr; }
  virtual DrawnControl* drawn() { return nullptr; }

  // A pointer that was pressed elsewhere, before this stood there, lets go at a place of the
  // screen: the end of a drag that opened a popup.
  virtual void release_at(POINT) {}
  // As if it were pressed: a default button by Return.
  virtual void press() {}
  // Whether it has a use of its own for a key, which then is not the form's: Return, Escape, Tab,
  // arrows. Asked of each key that goes down on it.
  virtual bool uses_key(UINT) const { return false; }
  // What the platform sends to the parent about it: WM_COMMAND, WM_NOTIFY, WM_HSCROLL, WM_VSCROLL,
  // WM_CTLCOLOR*, WM_DRAWITEM, WM_MEASUREITEM. Nothing: the platform's answer.
  virtual std::optional<LRESULT> reflected(UINT, WPARAM, LPARAM) { return {}; }
  // Keys and the focus of the control or of a window inside of it, before that window's own
  // procedure; an answer ends it. For inner windows call it first in their message().
  std::optional<LRESULT> form_message(UINT message, WPARAM wparam, LPARAM lparam);

 protected:
  // In place of message().
  virtual LRESULT control_message(UINT message, WPARAM wparam, LPARAM lparam) {
    return by_default(message, wparam, lparam);
  }
  LRESULT message(UINT message, WPARAM wparam, LPARAM lparam) final;

  bool stands_at(const Rect& place) const { return placed_ == place; }
  const FormLook& look() const { return look_; }
  const ControlSink& sink() const { return sink_; }
  void tell(DialogEvent::Kind kind) const { sink_.tell(kind, id()); }
  void take_focus();  // by a press on it, before what the press does
  DialogEvent event_of(DialogEvent::Kind kind, Point at = {}) const;  // with the control's size
  Point turned_point(LPARAM client) const;  // counted from the edge where lines begin

 private:
  ControlTemplate made_;
  const FormLook& look_;
  const ControlSink& sink_;
  Text name_;
  std::optional<Rect> placed_;  // nothing as well when the look is another since
  bool key_done_ = false;       // its letter is not typed
};

// Whether it is held down at this message.
bool is_key_held(int virtual_key);

}  // namespace orvello
