// A person in front of a right-to-left screen. The scenarios point at places as layouts have them:
// on this screen they lie on the other side, and so do the Left and the Right key.
#pragma once

#include "draw/mirrored.h"
#include "tests/contract/scenarios.h"
#include "tests/hebrew_locale.h"

namespace orvello {

template <typename Device>
class MirroredDevice : public Device {
 public:
  MirroredDevice() : Device(hebrew_locale()) {}

  void press(Point point) override { Device::press(turned(point)); }
  void move(Point point) override { Device::move(turned(point)); }
  void release(Point point) override { Device::release(turned(point)); }
  void key(std::uint32_t code) override { Device::key(mirrored_key(code)); }
  void wheel(Point point, int notches) override { Device::wheel(turned(point), notches); }
  void list_press(Point point) override { Device::list_press(turned(point)); }
  void list_move(Point point) override { Device::list_move(turned(point)); }
  void list_release(Point point) override { Device::list_release(turned(point)); }
  void list_key(std::uint32_t code, bool control_held) override {
    Device::list_key(mirrored_key(code), control_held);
  }
  void header_tap(Point point) override { Device::header_tap(turned(point)); }
  void key_anywhere(std::uint32_t code) override { Device::key_anywhere(mirrored_key(code)); }

 private:
  Point turned(Point point) {
    return mirrored(point, this->host().window.screen().resolution.width);
  }
};

}  // namespace orvello
