#include "hosts/qt/program_icon.h"

#include <QPixmap>

#include "hosts/qt/qt_text.h"
#include "resources/bitmaps.h"

namespace orvello {

QImage program_picture(int size) {
  return to_qt(load_bitmap(size % 48 == 0 ? kBitmapProgramLarge : kBitmapProgramSmall))
      .scaled(size, size);
}

QIcon program_icon() {
  QIcon icon;
  for (const int size : {16, 32, 48, 96}) icon.addPixmap(QPixmap::fromImage(program_picture(size)));
  return icon;
}

}  // namespace orvello
