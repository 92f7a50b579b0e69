// What a flat scroll bar shows and how it is drawn along: a thumb without arrows, wide enough for a
// pen. It stands in a room that its owner knows, in a window of its own or beside a list's rows.
#pragma once

#include <windows.h>

#include <optional>

#include "hosts/win32/form_look.h"

namespace orvello {

class ScrollTrack {
 public:
  ScrollTrack(const FormLook& look, bool vertical) : look_(look), vertical_(vertical) {}

  // Of `whole` pixels `page` are seen from `position` on.
  void set(int whole, int page, int position);
  bool scrolls() const { return whole_ > page_; }
  bool is_held() const { return grip_ >= 0; }

  // Press and drag answer the position that the person goes to; nothing: it is the same.
  std::optional<int> press(const RECT& room, POINT at);
  std::optional<int> drag(const RECT& room, POINT at);
  void let_go() { grip_ = -1; }
  void paint(HDC dc, const RECT& room) const;

 private:
  struct Thumb {
    int begin, length, room;  // along the track
  };
  Thumb thumb(const RECT& room) const;
  int along(const RECT& room, POINT at) const {
    return static_cast<int>(vertical_ ? at.y - room.top : at.x - room.left);
  }

  const FormLook& look_;
  bool vertical_;
  int whole_ = 1, page_ = 1, position_ = 0;
  int grip_ = -1;  // where in the thumb it is held; -1: it is not
};

}  // namespace orvello
