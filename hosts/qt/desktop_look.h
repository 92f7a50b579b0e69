// What the desktop around the window looks like, as far as the window's own widgets follow it.
#pragma once

#include <QFont>
#include <QPalette>
#include <optional>

namespace orvello {

struct DesktopLook {
  bool dark = false;      // light text on dark
  double text_scale = 1;  // how much larger than usual the desktop's texts are: 0.8 to 2
  friend bool operator==(const DesktopLook&, const DesktopLook&) = default;
};

// What a desktop's settings service says; nothing where there is none.
struct DesktopSettings {
  std::optional<bool> dark;
  std::optional<double> text_scale;
};

// The palette and the font are what the toolkit found out about the desktop; it says more often
// that a desktop is light than it knows.
DesktopLook look_of(const QPalette& palette, const QFont& font, const DesktopSettings& settings);

// Of the desktop that this runs on, now.
DesktopLook look_of_desktop(const DesktopSettings& settings);

}  // namespace orvello
