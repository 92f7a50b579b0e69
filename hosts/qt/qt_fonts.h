// The face that all texts are in.
#pragma once

#include <QFont>

#include "ports/canvas.h"

namespace orvello {

// Looked up once for a process: "Tahoma", or the nearest one in width that covers Cyrillic.
const QString& text_family();

// `height` is the em height in pixels, as everywhere.
QFont text_font(const FontSpec& spec);

}  // namespace orvello
