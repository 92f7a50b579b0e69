#include "hosts/win32/scroll_track.h"

#include <algorithm>

#include "hosts/win32/form_paint.h"

namespace orvello {

void ScrollTrack::set(int whole, int page, int position) {
  whole_ = std::max(1, whole);
  page_ = std::clamp(page, 1, whole_);
  position_ = std::clamp(position, 0, whole_ - page_);
}

ScrollTrack::Thumb ScrollTrack::thumb(const RECT& room) const {
  const int all =
      std::max(1, static_cast<int>(vertical_ ? room.bottom - room.top : room.right - room.left));
  const int least = std::min(look_.scaled(kTouchHeight), all);
  const int length = std::max(least, MulDiv(all, page_, whole_));
  const int begin = whole_ > page_ ? MulDiv(all - length, position_, whole_ - page_) : 0;
  return {begin, length, all};
}

std::optional<int> ScrollTrack::press(const RECT& room, POINT at) {
  const Thumb held = thumb(room);
  const int place = along(room, at) - held.begin;
  grip_ = place >= 0 && place < held.length ? place : held.length / 2;
  return drag(room, at);
}

std::optional<int> ScrollTrack::drag(const RECT& room, POINT at) {
  if (grip_ < 0) return {};
  const Thumb held = thumb(room);
  const int way = std::max(1, held.room - held.length), last = whole_ - page_;
  const int position = std::clamp(MulDiv(along(room, at) - grip_, last, way), 0, last);
  if (position == position_) return {};
  position_ = position;
  return position;
}

void ScrollTrack::paint(HDC dc, const RECT& room) const {
  const LookColors& colors = look_.colors();
  fill_room(dc, room, colors.ground);
  const Thumb shown = thumb(room);
  RECT place = room;
  (vertical_ ? place.top : place.left) += shown.begin;
  (vertical_ ? place.bottom : place.right) = (vertical_ ? place.top : place.left) + shown.length;
  const int gap = std::max(1, look_.scaled(2));
  const Color color = is_held() ? colors.accent : colors.edge;
  paint_round_box(dc, shrunk(place, gap, gap), color, color, 1, gap);
}

}  // namespace orvello
