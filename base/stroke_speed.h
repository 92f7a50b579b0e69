// How fast a pen was when it left a list that it had drawn along.
#pragma once

#include <cstdint>
#include <deque>

namespace orvello {

class StrokeSpeed {
 public:
  // A press begins a stroke at a height, and each move goes on with it. Times are milliseconds; 0,
  // an unknown one, makes the stroke as slow as one that rests.
  void begin(int y, std::uint64_t time);
  void move(int y, std::uint64_t time);
  // Pixels a second downwards over the last moment, when the pen is lifted; 0: it had come to rest,
  // or is too slow for the list to go on by itself.
  int at_release(std::uint64_t time) const;

 private:
  struct Place {
    int y = 0;
    std::uint64_t time = 0;
  };
  std::deque<Place> places_;  // of the last moment
};

}  // namespace orvello
