#include "hosts/qt/qt_keys.h"

#include <QKeyEvent>

#include "hosts/qt/direction.h"
#include "ports/messages.h"

namespace orvello {

namespace {

// What a Russian keyboard has on the keys A to Z.
constexpr char16_t kRussianKeys[] = u"ФИСВУАПРШОЛДЬТЩЗЙКЫЕГМЦЧНЯ";

}  // namespace

std::uint32_t virtual_key(const QKeyEvent& event) {
  const int key = turned_key(event.key());
  for (int i = 0; i < 26; ++i)
    if (key == kRussianKeys[i]) return static_cast<std::uint32_t>('A' + i);
  // Letters and digits have their upper-case code.
  if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9))
    return static_cast<std::uint32_t>(key);
  if (key >= Qt::Key_F1 && key <= Qt::Key_F12)
    return 0x70 + static_cast<std::uint32_t>(key - Qt::Key_F1);
  switch (key) {
    case Qt::Key_Menu:
      return 0x5D;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return kKeyReturn;
    case Qt::Key_Escape:
      return kKeyEscape;
    case Qt::Key_Backspace:
      return 0x08;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      return 0x09;
    case Qt::Key_Space:
      return 0x20;
    case Qt::Key_PageUp:
      return kKeyPageUp;
    case Qt::Key_PageDown:
      return kKeyPageDown;
    case Qt::Key_End:
      return kKeyEnd;
    case Qt::Key_Home:
      return kKeyHome;
    case Qt::Key_Left:
      return kKeyLeft;
    case Qt::Key_Up:
      return kKeyUp;
    case Qt::Key_Right:
      return kKeyRight;
    case Qt::Key_Down:
      return kKeyDown;
    case Qt::Key_Insert:
      return 0x2D;
    case Qt::Key_Delete:
      return 0x2E;
    default:
      return 0;
  }
}

}  // namespace orvello
