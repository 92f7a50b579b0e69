#include "hosts/qt/qt_fonts.h"

#include <QFontInfo>
#include <algorithm>

namespace orvello {

const QString& text_family() {
  // Asking for one face at a time is far cheaper than listing the font database.
  static const QString family = [] {
    for (const char* name : {"Tahoma", "DejaVu Sans Condensed", "DejaVu Sans", "Liberation Sans"}) {
      const QString wanted = QString::fromLatin1(name);
      if (QFontInfo(QFont(wanted)).family().startsWith(wanted)) return wanted;
    }
    return QFont().family();
  }();
  return family;
}

QFont text_font(const FontSpec& spec) {
  QFont font(text_family());
  font.setPixelSize(std::max(1, spec.height));
  font.setWeight(spec.weight >= 600 ? QFont::Bold : QFont::Normal);
  font.setKerning(false);
  // The same shapes on every machine, whatever its font settings: snapped to rows only.
  font.setHintingPreference(QFont::PreferVerticalHinting);
  auto strategy = QFont::PreferAntialias;
  if (!spec.cleartype) strategy = QFont::StyleStrategy(strategy | QFont::NoSubpixelAntialias);
  font.setStyleStrategy(strategy);
  return font;
}

}  // namespace orvello
