// The platform's accessibility interface for a window that draws what it shows: an object with
// simple children, which are numbered from 0 here. User-interface thread.
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include "base/geometry.h"
#include "base/text.h"

struct IAccessible;

namespace orvello {

class AccessibleObject;

struct AccessiblePart {
  Text name;
  Text description;  // what lies in it
  Rect place;        // pixels of the screen
  long role = 0;     // ROLE_SYSTEM_
  long state = 0;    // STATE_SYSTEM_
  Text action;       // what pressing it does; empty: it cannot be pressed
};

// Asked only while a screen reader looks. What it throws is reported, and answered as unknown.
class AccessibleSource {
 public:
  virtual ~AccessibleSource() = default;
  virtual AccessiblePart accessible_self() = 0;
  virtual int accessible_count() = 0;
  virtual AccessiblePart accessible_part(int part) = 0;
  virtual int accessible_focus() { return -1; }  // the part that the keyboard stands on; -1: none
  virtual std::vector<int> accessible_selection() { return {}; }
  virtual int accessible_at(Point screen);  // -1: none
  // A screen reader waits until this returns: what takes long is posted.
  virtual void press_accessible(int part) = 0;
};

// What a window keeps of it. When it goes, whoever still holds the object hears that it is gone.
class AccessibleWindow {
 public:
  explicit AccessibleWindow(AccessibleSource& source) : source_(source) {}
  ~AccessibleWindow();
  AccessibleWindow(const AccessibleWindow&) = delete;
  AccessibleWindow& operator=(const AccessibleWindow&) = delete;

  // Of WM_GETOBJECT; nothing: the platform answers.
  std::optional<LRESULT> answer(HWND window, WPARAM wparam, LPARAM lparam);
  // For listeners, of whom there are mostly none: EVENT_OBJECT_; -1: of the window itself.
  static void tell(HWND window, DWORD event, int part = -1);

 private:
  AccessibleSource& source_;
  AccessibleObject* object_ = nullptr;
};

}  // namespace orvello
