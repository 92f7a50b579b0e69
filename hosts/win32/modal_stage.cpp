#include "hosts/win32/modal_stage.h"

#include <utility>

#include "hosts/win32/wide_text.h"

namespace orvello {

class ModalStage::LoneWindow : public NativeWindow {
 public:
  std::function<void()> close_wanted;

  bool create(const Text& title, Size size) {
    Creation creation;
    creation.window_class = L"OrvelloAlone";
    creation.title = wide(title);
    creation.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
    RECT edges{0, 0, size.width, size.height};
    AdjustWindowRectEx(&edges, creation.style, FALSE, 0);
    const int width = edges.right - edges.left, height = edges.bottom - edges.top;
    const int x = (GetSystemMetrics(SM_CXSCREEN) - width) / 2;
    const int y = (GetSystemMetrics(SM_CYSCREEN) - height) / 2;
    creation.place = {x, y, x + width, y + height};
    return create_own(creation) != nullptr;
  }

 protected:
  LRESULT message(UINT message, WPARAM wparam, LPARAM lparam) override {
    // On a handheld the title has a button for it.
    if (message == WM_CLOSE || (message == WM_COMMAND && LOWORD(wparam) == IDOK)) {
      if (close_wanted) close_wanted();
      return 0;
    }
    if (message == WM_SETFOCUS) {
      if (const HWND child = GetWindow(window(), GW_CHILD)) SetFocus(child);
      return 0;
    }
    return by_default(message, wparam, lparam);
  }
};

ModalStage::ModalStage(Win32Window& window) : window_(window) {}

ModalStage::~ModalStage() { leave(); }

bool ModalStage::create(const Text& title, Size own) {
  const HWND frame = window_.frame();
  if (frame && IsWindowVisible(frame)) return true;
  lone_ = std::make_unique<LoneWindow>();
  if (!lone_->create(title, own)) return false;
  window_.handheld().fill_screen(lone_->window());
  return true;
}

HWND ModalStage::parent() const { return lone_ ? lone_->window() : window_.frame(); }

Size ModalStage::room() const {
  RECT client{};
  GetClientRect(parent(), &client);
  return {static_cast<int>(client.right), static_cast<int>(client.bottom)};
}

bool ModalStage::run(ModalCover cover, const std::function<void()>& shown) {
  sheet_ = cover.window;
  goes_on_ = cover.lets_presses_through;
  if (lone_) {
    lone_->close_wanted = cover.close_wanted;
    cover.window = lone_->window();
  }
  covering_ = cover.window;
  window_.let_pointer_go();
  window_.covers().push(std::move(cover));
  if (lone_) ShowWindow(lone_->window(), SW_SHOW);
  shown();
  const bool goes_on = window_.loop().run_until([this] { return ended_; });
  leave();
  return goes_on;
}

void ModalStage::end() {
  ended_ = true;
  // A menu that the press opened runs a loop inside of this one's.
  if (goes_on_) leave();
}

void ModalStage::leave() {
  const HWND covering = std::exchange(covering_, nullptr);
  if (!covering) return;
  window_.covers().drop(covering);
  ShowWindow(lone_ ? covering : sheet_, SW_HIDE);
}

}  // namespace orvello
