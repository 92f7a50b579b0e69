#include "hosts/qt/report_model.h"

#include <QPainter>
#include <algorithm>

#include "hosts/qt/qt_fonts.h"
#include "hosts/qt/qt_text.h"

namespace orvello {
namespace {

Qt::Alignment alignment_of(Align align) {
  if (align == Align::center) return Qt::AlignHCenter;
  return align == Align::right ? Qt::AlignRight : Qt::AlignLeft;
}

Text spoken(const ReportRow& row) {
  if (!row.name.empty()) return row.name;
  Text text;
  for (const Text& cell : row.cells) {
    if (cell.empty()) continue;
    if (!text.empty()) text += u' ';
    text += cell;
  }
  return text;
}

}  // namespace

void ReportModel::set_content(ReportContent content) {
  beginResetModel();
  content_ = std::move(content);
  font_ = text_font(content_.font);
  bold_font_ = text_font(content_.bold_font);
  pictures_.clear();
  for (const Image& picture : content_.pictures) pictures_.push_back(to_qt(picture));
  endResetModel();
}

const QImage* ReportModel::picture(int index) const {
  const auto at = static_cast<std::size_t>(index);
  return index >= 0 && at < pictures_.size() && !pictures_[at].isNull() ? &pictures_[at] : nullptr;
}

void ReportModel::set_mark(int row, ReportMark mark) {
  content_.rows[static_cast<std::size_t>(row)].mark = mark;
  emit dataChanged(index(row), index(row));
}

int ReportModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(content_.rows.size());
}

QVariant ReportModel::data(const QModelIndex& index, int role) const {
  if (!has_row(index.row())) return {};
  if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole) return {};
  return to_qt(spoken(row(index.row())));
}

QSize ReportDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const {
  return {0, std::max(1, density_.logical(model_.row(index.row()).height))};
}

void ReportDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
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
                      QColor(to_qt(content.line)));
  int x = left;
  for (std::size_t i = 0; i < content.columns.size(); ++i) {
    const QRect box(x, top, std::min(content.columns[i].width, right - x), all.height());
    if (box.width() <= 0) break;
    if (static_cast<int>(i) == content.picture_column)
      draw_pictures(*painter, row, box);
    else
      draw_cell(*painter, row, i, box, to_qt(selected ? content.selected_text : row.text));
    x += content.columns[i].width;
  }
  painter->restore();
}

void ReportDelegate::draw_cell(QPainter& painter, const ReportRow& row, std::size_t column,
                               const QRect& box, QRgb color) const {
  if (column >= row.cells.size() || row.cells[column].empty()) return;
  const ReportContent& content = model_.content();
  const QRect room = box.adjusted(content.padding, 0, -content.padding, 0);
  if (room.width() <= 0) return;
  QString text = to_qt(row.cells[column]);
  text.replace(u'\n', u' ').replace(u'\r', u' ').replace(u'\t', u' ');
  const QFont& font = model_.font(row.bold);
  // By the same measure as the canvas: what was measured to fit is not shortened.
  const QFontMetrics metrics(font);
  if (metrics.horizontalAdvance(text) > room.width())
    text = metrics.elidedText(text, Qt::ElideRight, room.width());
  painter.setFont(font);
  painter.setPen(QColor(color));
  painter.drawText(
      room,
      int(alignment_of(content.columns[column].align)) | Qt::AlignVCenter | Qt::TextSingleLine,
      text);
}

void ReportDelegate::draw_pictures(QPainter& painter, const ReportRow& row,
                                   const QRect& box) const {
  const ReportContent& content = model_.content();
  int width = 0;
  for (const int index : row.pictures)
    if (const QImage* picture = model_.picture(index))
      width += (width ? content.picture_gap : 0) + picture->width();
  const Align align = content.columns[static_cast<std::size_t>(content.picture_column)].align;
  const int room = std::max(0, box.width() - width);
  int x = box.left() + (align == Align::left ? 0 : align == Align::right ? room : room / 2);
  painter.setClipRect(box, Qt::IntersectClip);
  for (const int index : row.pictures) {
    const QImage* picture = model_.picture(index);
    if (!picture) continue;
    painter.drawImage(QPoint(x, box.top() + (box.height() - picture->height()) / 2), *picture);
    x += picture->width() + content.picture_gap;
  }
  painter.setClipping(false);
}

}  // namespace orvello
