// The fonts of all texts, made once each and given back with the last who uses them. Any thread.
#pragma once

#include <windows.h>

#include <mutex>
#include <vector>

#include "ports/canvas.h"

namespace orvello {

class Win32Fonts {
 public:
  Win32Fonts() = default;
  ~Win32Fonts();
  Win32Fonts(const Win32Fonts&) = delete;
  Win32Fonts& operator=(const Win32Fonts&) = delete;

  // Lives as long as this does; "Tahoma", or what the platform has in its place.
  HFONT font(const FontSpec& spec);

 private:
  struct Made {
    FontSpec spec;
    HFONT font = nullptr;
  };
  std::mutex lock_;
  std::vector<Made> made_;
};

}  // namespace orvello
