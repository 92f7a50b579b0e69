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

  // Lives as long as this does; "Tahoma", or the nearest one in width that covers Cyrillic.
  HFONT font(const FontSpec& spec);

 private:
  struct Made {
    FontSpec spec;
    HFONT font = nullptr;
  };
  std::mutex lock_;
  const wchar_t* family_ = nullptr;  // once it has been looked for
  std::vector<Made> made_;
};

}  // namespace orvello
