// A message box's window: an icon, a text that wraps and scrolls if it must, buttons.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "hosts/win32/form_look.h"
#include "hosts/win32/frame_button.h"
#include "hosts/win32/native_window.h"
#include "ports/message_box.h"

namespace orvello {

class BoxWindow : public NativeWindow {
 public:
  struct Choice {
    BoxAnswer answer;
    Text text;
  };
  struct Content {
    Text text, caption;
    BoxIcon icon = BoxIcon::none;
    std::vector<Choice> choices;
    std::size_t by_return = 0;            // pressed by Return
    BoxAnswer when_left = BoxAnswer::ok;  // without a choice
  };
  BoxWindow(const FormLook& look, Content content);
  ~BoxWindow() override;

  // In the middle of `over`, a place of the screen; false: it could not be made.
  bool make(HWND owner, const Rect& over);
  void show();
  void leave() { answer_ = content_.when_left; }
  bool answered() const { return answer_.has_value(); }
  BoxAnswer answer() const { return answer_.value_or(content_.when_left); }
  bool take_key(const MSG& message);

 protected:
  LRESULT message(UINT id, WPARAM wparam, LPARAM lparam) override;

 private:
  bool make_parts();
  int buttons_width() const;
  int button_width(const Text& text) const;
  void lay_out(const Rect& over);
  Rect room_on_screen(const Rect& over) const;
  void step(bool backwards);

  const FormLook& look_;
  Content content_;
  std::vector<std::unique_ptr<FrameButton>> buttons_;
  HWND icon_ = nullptr, text_ = nullptr;
  std::optional<BoxAnswer> answer_;
};

}  // namespace orvello
