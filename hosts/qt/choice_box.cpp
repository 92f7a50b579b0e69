#include "hosts/qt/choice_box.h"

#include <QAccessible>
#include <QListWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/drop_panel.h"
#include "hosts/qt/flat_edit.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_text.h"
#include "hosts/qt/row_delegate.h"

namespace orvello {
namespace {

constexpr int kRowsAtOnce = 8, kLeastRows = 3;
constexpr int kWideList = 320;  // design units; longer rows wrap

}  // namespace

void paint_drop_arrow(QWidget& field, const Density& density, int width) {
  const LookColors& look = *density.colors;
  QPainter painter(&field);
  painter.setRenderHint(QPainter::Antialiasing);
  const double half = density.scaled(4), depth = half / 2;
  const double from_side = width / 2.0;
  const QPointF middle(is_right_to_left() ? from_side : field.width() - from_side,
                       field.height() / 2.0);
  QPainterPath path(middle - QPointF(half, depth));
  path.lineTo(middle + QPointF(0, depth));
  path.lineTo(middle + QPointF(half, -depth));
  const double thick = std::max(1.5, density.scaled(2) * 1.0);
  painter.strokePath(path, QPen(qt_color(field.isEnabled() ? look.accent : look.dim_text), thick,
                                Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

ChoiceBox::ChoiceBox(QWidget* parent, const Density& density, bool editable, int limit)
    : Guarded(parent), density_(density) {
  if (editable) {
    edit_ = new FlatEdit(this, density, limit, false);
    edit_->installEventFilter(this);
    setFocusProxy(edit_);
    on_signal(edit_, &QLineEdit::textEdited, this, [this] {
      typed_ = true;
      if (changed) changed();
    });
  }
  setFocusPolicy(Qt::StrongFocus);
}

void ChoiceBox::set_rows(const std::vector<Text>& rows) {
  if (is_open()) panel_->close_soon();
  rows_ = rows;
  selected_ = -1;
  update();
}

int ChoiceBox::row_of(TextView text) const {
  const auto found = std::find(rows_.begin(), rows_.end(), text);
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

int ChoiceBox::selected() const { return edit_ ? row_of(text()) : selected_; }

void ChoiceBox::select(int row) {
  const bool there = row >= 0 && row < static_cast<int>(rows_.size());
  typed_ = false;
  selected_ = there ? row : -1;
  if (edit_) edit_->set_text(there ? to_qt(rows_[static_cast<std::size_t>(row)]) : QString());
  tell_reader();
  update();
}

Text ChoiceBox::text() const {
  if (edit_) return from_qt(edit_->text());
  return selected_ >= 0 ? rows_[static_cast<std::size_t>(selected_)] : Text();
}

void ChoiceBox::set_text(TextView text) {
  typed_ = false;
  if (edit_) return edit_->set_text(to_qt(text));
  select(row_of(text));
}

// Its row is its name's second half for a screen reader, which an edit tells by itself.
void ChoiceBox::tell_reader() {
  if (edit_ || !QAccessible::isActive()) return;
  QAccessibleValueChangeEvent event(this, shown());
  QAccessible::updateAccessibility(&event);
}

int ChoiceBox::arrow_width() const { return std::min(density_.scaled(kTouchHeight), width() / 2); }

QString ChoiceBox::shown() const { return to_qt(text()).replace(u'\n', u' '); }

bool ChoiceBox::is_open() const { return panel_ && !panel_->isHidden(); }

void ChoiceBox::open() {
  if (is_open() || !isVisible() || !isEnabled()) return;
  auto* list = new QListWidget;
  list->setFont(widget_font(density_));
  make_flat_rows(*list, density_);
  list->setFrameShape(QFrame::NoFrame);
  list->setAccessibleName(accessibleName());
  const RowDelegate measure(density_, nullptr);
  int wide = width();
  const int most = std::max(wide, density_.scaled(kWideList));
  for (const Text& row : rows_) {
    new QListWidgetItem(to_qt(row), list);
    if (wide < most) wide = std::min(most, std::max(wide, measure.wanted_width(to_qt(row))));
  }
  panel_ = new DropPanel(*this, density_, list);
  list_ = list;
  panel_->closed = [this] { update(); };
  const int row = density_.scaled(kTouchHeight), count = static_cast<int>(rows_.size());
  const int shown = std::clamp(count, 1, kRowsAtOnce);
  if (count > shown && wide > width()) wide += density_.scaled(kScrollBarWidth);
  panel_->open({wide, shown * row}, std::min(shown, kLeastRows) * row);
  list->doItemsLayout();
  list->setCurrentRow(selected());
  if (QListWidgetItem* item = list->currentItem()) {
    const bool high = list->visualItemRect(item).height() > list->viewport()->height();
    list->scrollToItem(
        item, high ? QAbstractItemView::PositionAtTop : QAbstractItemView::PositionAtCenter);
  }
  on_signal(list, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { take(list_->row(item)); });
  update();
}

void ChoiceBox::take(int row) {
  if (panel_) panel_->close_soon();
  const bool other = row != selected();
  select(row);
  if (other && changed) changed();
  if (taken) taken();
}

void ChoiceBox::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  if (edit_) edit_->setFocus(Qt::MouseFocusReason);
  open();
}

// It scrolls the form: a choice that is passed on the way is not meant.
void ChoiceBox::wheelEvent(QWheelEvent* event) { event->ignore(); }

void ChoiceBox::resizeEvent(QResizeEvent*) {
  const int edge = std::max(1, density_.scaled(kFieldEdge));
  const QRect room(edge, edge, width() - arrow_width() - edge, height() - 2 * edge);
  if (edit_) edit_->setGeometry(turned(room, width()));
}

void ChoiceBox::focusInEvent(QFocusEvent*) { update(); }
void ChoiceBox::focusOutEvent(QFocusEvent*) { update(); }

void ChoiceBox::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::EnabledChange) update();
}

void ChoiceBox::paintEvent(QPaintEvent*) {
  const LookColors& look = *density_.colors;
  paint_field_ground(*this, density_);
  if (!edit_) {
    QPainter painter(this);
    const int side = density_.scaled(1.5 * kGrid);
    const QRect room = turned(rect().adjusted(side, 0, -arrow_width(), 0), width());
    painter.setFont(font());
    painter.setPen(qt_color(isEnabled() ? look.text : look.dim_text));
    draw_directed(painter, room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                  fontMetrics().elidedText(shown(), Qt::ElideRight, room.width()));
  }
  paint_drop_arrow(*this, density_, arrow_width());
  paint_field_edge(*this, density_, edit_ ? edit_->hasFocus() : hasFocus());
}

}  // namespace orvello
