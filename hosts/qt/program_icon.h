// The program's icon.
#pragma once

#include <QIcon>
#include <QImage>

namespace orvello {

// In whole multiples, unsmoothed: it is drawn pixel by pixel. `size` is a multiple of 16 or 48.
QImage program_picture(int size);

QIcon program_icon();

}  // namespace orvello
