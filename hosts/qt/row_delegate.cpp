#include "hosts/qt/row_delegate.h"

#include <QListWidget>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "hosts/qt/direction.h"
#include "hosts/qt/qt_look.h"

namespace orvello {
namespace {

constexpr int kTextFlags = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWrapAnywhere;
constexpr int kWrapFlags = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap;
constexpr int kManyRows = 10000;  // high enough for any text

// A word that is wider than the row breaks anywhere, others between words.
int flags_for(const QFontMetrics& metrics, int width, const QString& text) {
  const QRect words = metrics.boundingRect(QRect(0, 0, width, kManyRows), kWrapFlags, text);
  return words.width() > width ? kTextFlags : kWrapFlags;
}

}  // namespace

QRect RowDelegate::text_room(const QRect& row) const {
  const int side = density_.scaled(1.5 * kGrid), top = density_.scaled(3);
  return row.adjusted(side, top, -side, -top);
}

int RowDelegate::wanted_width(const QString& text) const {
  const QRect room = text_room(QRect(0, 0, kManyRows, kManyRows));
  return QFontMetrics(widget_font(density_)).horizontalAdvance(text) + kManyRows - room.width();
}

QSize RowDelegate::row_size(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
  const int width = view ? view->viewport()->width() : option.rect.width();
  const QRect room = text_room(QRect(0, 0, width, kManyRows));
  const QString text = index.data().toString();
  const QFontMetrics metrics(option.font);
  const int flags = flags_for(metrics, room.width(), text);
  const int height = metrics.boundingRect(room, flags, text).height() + kManyRows - room.height();
  return {0, std::max(density_.scaled(kTouchHeight), height)};
}

void RowDelegate::paint_row(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
  const LookColors& look = *density_.colors;
  const bool enabled = option.state & QStyle::State_Enabled;
  const bool selected = option.state & QStyle::State_Selected;
  painter->save();
  if (selected) painter->fillRect(option.rect, qt_color(enabled ? look.accent : look.dim_text));
  const QRect room = text_room(option.rect);
  const QString text = index.data().toString();
  painter->setFont(option.font);
  painter->setPen(qt_color(selected ? look.accent_text : enabled ? look.text : look.dim_text));
  draw_directed(*painter, room, flags_for(QFontMetrics(option.font), room.width(), text), text);
  if (option.state & QStyle::State_HasFocus) {
    const double line = std::max(1, density_.scaled(1)), gap = 1.5 * line;
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(qt_color(selected ? look.accent_text : look.accent), line));
    painter->drawRect(QRectF(option.rect).adjusted(gap, gap, -gap, -gap));
  }
  painter->restore();
}

void make_flat_rows(QListWidget& list, const Density& density) {
  // Long rows wrap: a pen that scrolls in two directions is no help in reading them.
  list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list.setResizeMode(QListView::Adjust);
  list.setWordWrap(true);  // else it would keep its rows' heights when its width changes
  list.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list.setItemDelegate(new RowDelegate(density, &list));
  flatten_scroll_bar(*list.verticalScrollBar(), density);
}

}  // namespace orvello
