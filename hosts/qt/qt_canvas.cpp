#include "hosts/qt/qt_canvas.h"

#include <QPainterPath>
#include <QPolygonF>

#include "hosts/qt/qt_fonts.h"
#include "hosts/qt/qt_text.h"

namespace orvello {
namespace {

bool only_straight(const std::vector<Point>& points) {
  for (std::size_t i = 1; i < points.size(); ++i)
    if (points[i].x != points[i - 1].x && points[i].y != points[i - 1].y) return false;
  return true;
}

int flags_of(Align align) {
  if (align == Align::center) return Qt::AlignHCenter;
  return align == Align::right ? Qt::AlignRight : Qt::AlignLeft;
}

}  // namespace

QImage to_qt(const Image& image) {
  QImage result(image.width, image.height, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < image.height; ++y) {
    auto* row = reinterpret_cast<QRgb*>(result.scanLine(y));
    for (int x = 0; x < image.width; ++x)
      row[x] = image.at(x, y) == kMagenta ? 0 : to_qt(image.at(x, y));
  }
  return result;
}

QtCanvas::QtCanvas(std::uint32_t* pixels, Size size, QImage::Format format)
    : pixels_(pixels),
      size_(size),
      clip_{0, 0, size.width, size.height},
      image_(reinterpret_cast<uchar*>(pixels), size.width, size.height, size.width * 4, format) {
  if (size_.width <= 0 || size_.height <= 0) return;
  painter_.begin(&image_);
  painter_.setLayoutDirection(Qt::LayoutDirectionAuto);  // each text's own
}

void QtCanvas::set_clip(std::optional<Rect> clip) {
  clip_ = {0, 0, size_.width, size_.height};
  if (clip) clip_ = intersection(clip_, *clip);
  restore_clip();
}

void QtCanvas::restore_clip() { painter_.setClipRect(to_qt(clip_)); }

void QtCanvas::fill_rect(const Rect& rect, Color color) {
  const Rect part = intersection(rect, clip_);
  for (int y = part.y; y < part.bottom(); ++y) {
    std::uint32_t* row = pixels_ + static_cast<std::size_t>(y) * size_.width;
    std::fill(row + part.x, row + part.right(), to_qt(color));
  }
}

void QtCanvas::frame_rect(const Rect& rect, Color color, int width) {
  if (rect.empty() || width <= 0) return;
  const int across = std::min(width, (rect.width + 1) / 2);
  const int down = std::min(width, (rect.height + 1) / 2);
  fill_rect({rect.x, rect.y, rect.width, down}, color);
  fill_rect({rect.x, rect.bottom() - down, rect.width, down}, color);
  fill_rect({rect.x, rect.y, across, rect.height}, color);
  fill_rect({rect.right() - across, rect.y, across, rect.height}, color);
}

// Straight lines are blocks of pixels with both ends drawn; slanted ones are smoothed.
void QtCanvas::polyline(const std::vector<Point>& points, Color color, int width) {
  if (points.size() < 2 || width <= 0) return;
  if (only_straight(points)) {
    for (std::size_t i = 1; i < points.size(); ++i) {
      const Point a = points[i - 1], b = points[i];
      const int x = std::min(a.x, b.x) - width / 2, y = std::min(a.y, b.y) - width / 2;
      fill_rect({x, y, std::abs(a.x - b.x) + width, std::abs(a.y - b.y) + width}, color);
    }
    return;
  }
  const double shift = width % 2 ? 0.5 : 0.0;
  QPolygonF line;
  for (const Point& point : points) line << QPointF(point.x + shift, point.y + shift);
  painter_.setRenderHint(QPainter::Antialiasing, true);
  painter_.setPen(QPen(QColor(to_qt(color)), width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter_.setBrush(Qt::NoBrush);
  painter_.drawPolyline(line);
}

void QtCanvas::fill_polygon(const std::vector<Point>& points, Color color) {
  if (points.size() < 3) return;
  QPolygonF shape;
  for (const Point& point : points) shape << QPointF(point.x, point.y);
  painter_.setRenderHint(QPainter::Antialiasing, true);
  painter_.setPen(Qt::NoPen);
  painter_.setBrush(QColor(to_qt(color)));
  painter_.drawPolygon(shape);
}

const QtCanvas::Font& QtCanvas::font_of(const FontSpec& spec) {
  if (fonts_thread_ != std::this_thread::get_id()) {
    fonts_.clear();
    painter_.setFont(QFont());
    fonts_thread_ = std::this_thread::get_id();
  }
  for (const Font& font : fonts_)
    if (font.spec == spec) return font;
  const QFont font = text_font(spec);
  fonts_.push_back({spec, font, QFontMetrics(font)});
  return fonts_.back();
}

void QtCanvas::draw_line(QString text, const Rect& box, const Font& font, Align align,
                         bool centered) {
  int x = box.x;
  if (align != Align::left) {
    const int room = box.width - font.metrics.horizontalAdvance(text);
    x += align == Align::right ? room : room / 2;
  }
  int y = box.y + font.metrics.ascent();
  if (centered) y += (box.height - font.metrics.height()) / 2;
  painter_.drawText(QPoint(x, y), text);
}

void QtCanvas::draw_text(TextView text, const Rect& box, const TextStyle& style) {
  const Rect part = intersection(box, clip_);
  if (part.empty() || text.empty()) return;
  const Font& font = font_of(style.font);
  painter_.setFont(font.font);
  painter_.setPen(QColor(to_qt(style.color)));
  // Setting a clip costs more than most texts: only those that could leave the box need one.
  QString string = to_qt(text);
  const int advance = style.word_break ? box.width + 1 : font.metrics.horizontalAdvance(string);
  const bool fits = part == box && advance + font.spec.height / 4 <= box.width &&
                    font.metrics.height() <= box.height;
  if (!fits) painter_.setClipRect(to_qt(part));
  if (style.word_break) {
    int flags = flags_of(style.align) | Qt::TextWordWrap;
    flags |= style.vertical_center ? Qt::AlignVCenter : Qt::AlignTop;
    painter_.drawText(to_qt(box), flags, string);
  } else {
    string.replace(u'\n', u' ').replace(u'\r', u' ').replace(u'\t', u' ');
    draw_line(string, box, font, style.align, style.vertical_center);
  }
  if (!fits) restore_clip();
}

Size QtCanvas::measure(TextView text, const FontSpec& spec) {
  const Font& font = font_of(spec);
  return {text.empty() ? 0 : font.metrics.horizontalAdvance(to_qt(text)), font.metrics.height()};
}

void QtCanvas::draw_image(const Image& image, const Rect& source, Point at) {
  const Rect inside = intersection(source, {0, 0, image.width, image.height});
  const Rect target = intersection(
      clip_, {at.x + inside.x - source.x, at.y + inside.y - source.y, inside.width, inside.height});
  for (int y = target.y; y < target.bottom(); ++y) {
    std::uint32_t* row = pixels_ + static_cast<std::size_t>(y) * size_.width;
    for (int x = target.x; x < target.right(); ++x) {
      const Color color = image.at(x - at.x + source.x, y - at.y + source.y);
      if (color != kMagenta) row[x] = to_qt(color);
    }
  }
}

}  // namespace orvello
