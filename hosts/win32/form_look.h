// How large and in which colours the controls of a form are drawn: one for each density. Lengths in
// `scaled` are design units, pixels at 96 dpi; all others are device pixels. What it owns goes with
// it: controls take its fonts anew when look_changed() tells them.
#pragma once

#include <windows.h>

#include <map>
#include <memory>

#include "calendar/locale_data.h"
#include "draw/look_colors.h"
#include "hosts/win32/win32_fonts.h"

namespace orvello {

inline constexpr int kTextSize = 11;     // design units, as are the following
inline constexpr int kTouchHeight = 27;  // 7 mm
inline constexpr int kGrid = 4;
inline constexpr int kScrollBarWidth = 14;

inline COLORREF color_ref(Color color) { return color; }  // the platform keeps it alike

// A font or brush that goes with its owner.
struct GdiRelease {
  void operator()(void* object) const { DeleteObject(object); }
};
using OwnedGdi = std::unique_ptr<void, GdiRelease>;

class FormLook {
 public:
  struct Settings {
    double unit = 1;  // device pixels in a design unit
    bool right_to_left = false;
    LookColors colors = kLightColors;
    friend bool operator==(const Settings&, const Settings&) = default;
  };
  // `locale` outlives the look. `canvas_fonts`: of all texts; null: its own.
  FormLook(const Settings& settings, const LocaleData& locale,
           std::shared_ptr<Win32Fonts> canvas_fonts = nullptr);

  // True when anything is another than before: fonts and brushes are new then.
  bool set(const Settings& settings);
  int generation() const { return generation_; }  // another with each such change

  double unit() const { return settings_.unit; }
  int scaled(double design) const;
  bool right_to_left() const { return settings_.right_to_left; }
  const LookColors& colors() const { return settings_.colors; }
  const LocaleData& locale() const { return locale_; }
  const std::shared_ptr<Win32Fonts>& canvas_fonts() const { return canvas_fonts_; }
  HFONT font(bool bold = false) const;
  HFONT font(int height, bool bold) const;  // in device pixels
  int line_height(bool bold = false) const;
  HBRUSH brush(Color color) const;

 private:
  Settings settings_;
  int generation_ = 0;
  const LocaleData& locale_;
  std::shared_ptr<Win32Fonts> canvas_fonts_;
  mutable std::map<COLORREF, OwnedGdi> brushes_;
};

}  // namespace orvello
