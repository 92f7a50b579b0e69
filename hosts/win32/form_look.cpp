#include "hosts/win32/form_look.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "hosts/win32/painting.h"

namespace orvello {

FormLook::FormLook(const Settings& settings, const LocaleData& locale,
                   std::shared_ptr<Win32Fonts> canvas_fonts)
    : settings_(settings),
      locale_(locale),
      canvas_fonts_(canvas_fonts ? std::move(canvas_fonts) : std::make_shared<Win32Fonts>()) {}

bool FormLook::set(const Settings& settings) {
  if (settings == settings_) return false;
  settings_ = settings;
  ++generation_;
  brushes_.clear();
  return true;
}

int FormLook::scaled(double design) const {
  return static_cast<int>(std::lround(design * settings_.unit));
}

HFONT FormLook::font(bool bold) const {
  return font(std::max(6, static_cast<int>(kTextSize * settings_.unit)), bold);
}

HFONT FormLook::font(int height, bool bold) const {
  return canvas_fonts_->font({height, bold ? 700 : 400, false});
}

int FormLook::line_height(bool bold) const {
  const MeasuringDc measuring(font(bold));
  TEXTMETRICW metrics{};
  GetTextMetricsW(measuring.dc(), &metrics);
  return metrics.tmHeight;
}

HBRUSH FormLook::brush(Color color) const {
  OwnedGdi& brush = brushes_[color_ref(color)];
  if (!brush) brush.reset(CreateSolidBrush(color_ref(color)));
  return static_cast<HBRUSH>(brush.get());
}

}  // namespace orvello
