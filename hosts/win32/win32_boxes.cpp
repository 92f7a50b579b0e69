// First: the platform's headers keep a name that these use in passing.
#include "hosts/shared/box_choices.h"
#include "resources/strings.h"

#include "hosts/win32/win32_boxes.h"

#include "hosts/win32/box_window.h"
#include "hosts/win32/painting.h"

namespace orvello {
namespace {

UINT sound_of(BoxIcon icon) {
  if (icon == BoxIcon::error) return MB_ICONERROR;
  return icon == BoxIcon::warning ? UINT{MB_ICONWARNING} : UINT{MB_OK};
}

// The client area of what the box belongs to, or the middle of the screen.
Rect place_over(HWND owner) {
  if (!owner) return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
  RECT inside = native_rect(client_rect(owner));
  MapWindowPoints(owner, nullptr, reinterpret_cast<POINT*>(&inside), 2);
  return from_native(inside);
}

}  // namespace

BoxAnswer Win32Boxes::show(TextView text, TextView caption, BoxIcon icon, BoxButtons buttons,
                           bool) {
  if (answer) return answer(text, caption, icon, buttons);
  BoxWindow::Content content{Text(text), Text(caption), icon, {}, 0, BoxAnswer::ok};
  for (const BoxChoice& choice : box_choices(buttons))
    content.choices.push_back({choice.answer, load_string(choice.text, *this)});
  if (may_lose(buttons)) content.by_return = content.choices.size() - 1;
  content.when_left = content.choices.back().answer;

  const FormLook look(
      {window_.form_density().unit(), window_.right_to_left(), *window_.form_density().colors},
      locale_, window_.fonts());
  BoxWindow box(look, std::move(content));
  // Also what belongs to nobody goes before the window when that is shown, else it could be lost
  // behind it.
  const HWND frame = window_.is_active() ? window_.frame() : nullptr;
  const ModalCover* top = window_.covers().top();
  const bool over_other = top && frame && !IsChild(frame, top->window);
  const HWND owner = over_other ? top->window : frame;
  if (!box.make(owner, place_over(owner))) return box.answer();
  ModalCover cover;
  cover.window = box.window();
  cover.close_wanted = [&box] { box.leave(); };
  window_.let_pointer_go();
  window_.covers().push(cover);
  const int filter = window_.loop().add_filter([&box, this](MSG& message) {
    const ModalCover* standing = window_.covers().top();
    return standing && standing->window == box.window() && box.take_key(message);
  });
  MessageBeep(sound_of(icon));
  box.show();
  window_.loop().run_until([&box] { return box.answered() || !box.window(); });
  window_.loop().remove_filter(filter);
  window_.covers().drop(cover.window);
  return box.answer();
}

void Win32Boxes::beep(Beep beep) {
  MessageBeep(beep == Beep::hand ? UINT{MB_ICONHAND} : UINT{MB_OK});
}

}  // namespace orvello
