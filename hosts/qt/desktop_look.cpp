#include "hosts/qt/desktop_look.h"

#include <QGuiApplication>
#include <algorithm>

namespace orvello {
namespace {

constexpr double kLeastScale = 0.8, kMostScale = 2;
// Desktops differ in the size that their texts have as long as nobody has changed it.
constexpr double kSmallUsual = 9, kLargeUsual = 11;  // points

double scale_of(const QFont& font) {
  const double points = font.pointSizeF();
  if (points <= 0) return 1;  // one that is given in pixels says nothing about the desktop
  return points < kSmallUsual ? points / kSmallUsual : std::max(1.0, points / kLargeUsual);
}

}  // namespace

DesktopLook look_of(const QPalette& palette, const QFont& font, const DesktopSettings& settings) {
  const int ground = palette.color(QPalette::Window).lightness();
  const int text = palette.color(QPalette::WindowText).lightness();
  DesktopLook look;
  look.dark = text > ground || settings.dark.value_or(false);
  look.text_scale =
      std::clamp(scale_of(font) * settings.text_scale.value_or(1), kLeastScale, kMostScale);
  return look;
}

DesktopLook look_of_desktop(const DesktopSettings& settings) {
  return look_of(QGuiApplication::palette(), QGuiApplication::font(), settings);
}

}  // namespace orvello
