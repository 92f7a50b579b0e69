#include "hosts/qt/report_model.h"

#include <QPainter>
#include <algorithm>
#include <numeric>

#include "hosts/qt/direction.h"
#include "hosts/qt/flat_choice.h"
#include "hosts/qt/qt_fonts.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_text.h"
#include "hosts/shared/spoken_names.h"

namespace orvello {
namespace {

constexpr int kMarkSide = 14;  // design units

Qt::Alignment alignment_of(Align align) {
  if (align == Align::center) return Qt::AlignHCenter;
  return align == Align::right ? Qt::AlignRight : Qt::AlignLeft;
}

QString single_line(const Text& text) {
  return to_qt(text).replace(u'\n', u' ').replace(u'\r', u' ').replace(u'\t', u' ');
}

}  // namespace

void draw_cell_text(QPainter& painter, QString text, const QRect& room, Align align) {
  if (room.width() <= 0 || text.isEmpty()) return;
  const QFontMetrics metrics(painter.font());
  if (metrics.horizontalAdvance(text) > room.width())
    text = metrics.elidedText(text, Qt::ElideRight, room.width());
  draw_directed(painter, room, int(alignment_of(align)) | Qt::AlignVCenter | Qt::TextSingleLine,
                text);
}

void ReportModel::set_content(ReportContent content) {
  beginResetModel();
  content_ = std::move(content);
  font_ = text_font(content_.font);
  bold_font_ = text_font(content_.bold_font);
  pictures_.clear();
  for (const Image& picture : content_.pictures) pictures_.push_back(to_qt(picture));
  widths_.clear();
  for (std::size_t i = 0; i < content_.columns.size(); ++i)
    widths_.push_back(content_.columns[i].width > 0 ? content_.columns[i].width : needed_width(i));
  endResetModel();
}

// Nothing where there is nothing to show.
int ReportModel::needed_width(std::size_t column) const {
  const QFontMetrics plain(font_), bold(bold_font_);
  int width = 0;
  if (static_cast<int>(column) == content_.picture_column) {
    for (const ReportRow& row : content_.rows) width = std::max(width, pictures_width(row));
    return width;
  }
  const Text& title = content_.columns[column].title;
  if (!title.empty()) width = bold.horizontalAdvance(to_qt(title));
  const int mark = column == 0 ? mark_width() : 0;
  for (const ReportRow& row : content_.rows) {
    const bool text = column < row.cells.size() && !row.cells[column].empty();
    if (!text && mark == 0) continue;
    const QFontMetrics& metrics = row.bold ? bold : plain;
    const int wide = text ? metrics.horizontalAdvance(single_line(row.cells[column])) : 0;
    width = std::max(width, wide + mark);
  }
  return width > 0 ? width + 2 * content_.padding : 0;
}

int ReportModel::whole_width() const { return std::accumulate(widths_.begin(), widths_.end(), 0); }

int ReportModel::mark_side() const { return density_.device(density_.scaled(kMarkSide)); }

int ReportModel::mark_width() const {
  const bool any = std::any_of(content_.rows.begin(), content_.rows.end(),
                               [](const ReportRow& row) { return row.mark != ReportMark::none; });
  return any ? mark_side() + density_.device(density_.scaled(1.5 * kGrid)) : 0;
}

void ReportModel::set_mark(int index, ReportMark mark) {
  if (!has_row(index)) return;
  content_.rows[static_cast<std::size_t>(index)].mark = mark;
  emit dataChanged(this->index(index), this->index(index));
}

int ReportModel::pictures_width(const ReportRow& row) const {
  int width = 0;
  for (const int index : row.pictures)
    if (const QImage* shown = picture(index))
      width += (width ? content_.picture_gap : 0) + shown->width();
  return width;
}

const QImage* ReportModel::picture(int index) const {
  const auto at = static_cast<std::size_t>(index);
  return index >= 0 && at < pictures_.size() && !pictures_[at].isNull() ? &pictures_[at] : nullptr;
}

int ReportModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(content_.rows.size());
}

QVariant ReportModel::row_data(const QModelIndex& index, int role) const {
  if (!has_row(index.row())) return {};
  const ReportMark mark = row(index.row()).mark;
  if (role == Qt::CheckStateRole && mark != ReportMark::none)
    return mark == ReportMark::set ? Qt::Checked : Qt::Unchecked;
  if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole) return {};
  return to_qt(spoken_row(row(index.row())));
}

QSize ReportDelegate::row_size(const QStyleOptionViewItem&, const QModelIndex& index) const {
  const int width = model_.is_sideways() ? density_.logical(model_.whole_width()) : 0;
  return {width, std::max(1, density_.logical(model_.row(index.row()).height))};
}

void ReportDelegate::paint_row(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
  const ReportContent& content = model_.content();
  const ReportRow& row = model_.row(index.row());
  const bool selected = option.state & QStyle::State_Selected;
  painter->save();
  // From here on in device pixels: the row's edges are rounded, so that neighbours still meet.
  painter->scale(1 / density_.ratio, 1 / density_.ratio);
  const int top = density_.device(option.rect.top());
  const int bottom = density_.device(option.rect.top() + option.rect.height());
  const int left = density_.device(option.rect.left());
  const int right = density_.device(option.rect.left() + option.rect.width());
  const QRect all(left, top, right - left, bottom - top);
  painter->fillRect(all, QColor(to_qt(selected ? content.selected_background : row.background)));
  if (row.line_above)
    painter->fillRect(QRect(left, top, all.width(), content.line_width),
                      QColor(to_qt(*row.line_above)));
  int x = 0;
  for (std::size_t i = 0; i < content.columns.size(); ++i) {
    const QRect cell(x, top, std::min(model_.column_width(i), all.width() - x), all.height());
    x += model_.column_width(i);
    if (cell.width() <= 0) continue;
    QRect box = turned(cell, all.width()).translated(left, 0);
    const Color text = i == 0 ? row.first_text.value_or(row.text) : row.text;
    const QRgb color = to_qt(selected ? content.selected_text : text);
    if (i == 0 && model_.mark_width() > 0) {
      draw_mark(*painter, row, box, color);
      box = turned(cell.adjusted(model_.mark_width(), 0, 0, 0), all.width()).translated(left, 0);
    }
    if (static_cast<int>(i) == content.picture_column)
      draw_pictures(*painter, row, box);
    else
      draw_cell(*painter, row, i, box, color);
  }
  painter->restore();
}

void ReportDelegate::draw_cell(QPainter& painter, const ReportRow& row, std::size_t column,
                               const QRect& box, QRgb color) const {
  if (column >= row.cells.size() || row.cells[column].empty()) return;
  const ReportContent& content = model_.content();
  painter.setFont(model_.font(row.bold));
  painter.setPen(QColor(color));
  const QRect room = box.adjusted(content.padding, 0, -content.padding, 0);
  const Align align = content.columns[column].align;
  if (!row.lines) return draw_cell_text(painter, single_line(row.cells[column]), room, align);
  const int height = content.font.height * 12 / 10;
  int y = room.top() + (room.height() - lines_of(row) * height) / 2;
  for (const QString& line : to_qt(row.cells[column]).split(u'\n')) {
    draw_cell_text(painter, line, QRect(room.left(), y, room.width(), height), align);
    y += height;
  }
}

// In the row's own colours, so that it can be seen on any of them.
void ReportDelegate::draw_mark(QPainter& painter, const ReportRow& row, const QRect& box,
                               QRgb color) const {
  if (row.mark == ReportMark::none) return;
  const int side = model_.mark_side();
  const QRect inside(model_.content().padding, (box.height() - side) / 2, side, side);
  const QRectF place(turned(inside, box.width()).translated(box.topLeft()));
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  const double line = std::max(1.0, side / 14.0);
  painter.setPen(QPen(QColor(color), line));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(place.adjusted(line / 2, line / 2, -line / 2, -line / 2), 2 * line,
                          2 * line);
  if (row.mark == ReportMark::set) paint_tick(painter, place);
  painter.restore();
}

void ReportDelegate::draw_pictures(QPainter& painter, const ReportRow& row,
                                   const QRect& box) const {
  const ReportContent& content = model_.content();
  const int width = model_.pictures_width(row);
  const Align align = content.columns[static_cast<std::size_t>(content.picture_column)].align;
  const int room = std::max(0, box.width() - width);
  int x = align == Align::left ? 0 : align == Align::right ? room : room / 2;
  painter.setClipRect(box, Qt::IntersectClip);
  for (const int index : row.pictures) {
    const QImage* picture = model_.picture(index);
    if (!picture) continue;
    const QRect place(x, (box.height() - picture->height()) / 2, picture->width(), 0);
    painter.drawImage(turned(place, box.width()).topLeft() + box.topLeft(), *picture);
    x += picture->width() + content.picture_gap;
  }
  painter.setClipping(false);
}

}  // namespace orvello
