#include "hosts/qt/qt_report.h"

#include <QCoreApplication>
#include <QItemSelection>
#include <QKeyEvent>
#include <QPointer>
#include <QScrollBar>
#include <QTimer>
#include <QWheelEvent>
#include <cmath>

#include "draw/mirrored.h"
#include "hosts/qt/callbacks.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/focus_edge.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_text.h"
#include "hosts/qt/report_model.h"
#include "hosts/qt/report_titles.h"
#include "hosts/qt/window_place.h"

namespace orvello {

ReportView::ReportView(QWidget* parent, const Density& density, const ControlTemplate& control,
                       ControlInput::Report report)
    : FlatArea<QListView>(parent, density),
      density_(density),
      input_(*viewport(), *this, density, control.id, std::move(report)),
      model_(new ReportModel(density, this)),
      titles_(new ReportTitles(this, *model_, density)),
      focus_edge_(new FocusEdge(*this, density)),
      glide_(this, [this](double pixels) { return scroll_on(pixels); }) {
  setModel(model_);
  setItemDelegate(new ReportDelegate(*model_, density, this));
  if (control.place.x <= 0) setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(ScrollPerPixel);
  setHorizontalScrollMode(ScrollPerPixel);
  setResizeMode(Adjust);
  setSelectionMode(MultiSelection);
  setEditTriggers(NoEditTriggers);
  setAutoScroll(false);
  flatten_scroll_bar(*verticalScrollBar(), density);
  flatten_scroll_bar(*horizontalScrollBar(), density);
  on_signal(horizontalScrollBar(), &QScrollBar::valueChanged, titles_,
            [this](int left) { titles_->scroll_to(left); });
  on_signal(verticalScrollBar(), &QScrollBar::actionTriggered, this, [this] { glide_.end(); });
  on_signal(selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& more, const QItemSelection& less) {
              if (selecting_) return;
              const QModelIndexList rows = more.isEmpty() ? less.indexes() : more.indexes();
              if (!rows.isEmpty()) selected_by_other(rows.first().row());
            });
}

// A screen reader selects in the model. The program does that itself: for it this is a tap.
void ReportView::selected_by_other(int row) {
  after(0, this, [this, row] {
    select_rows(std::vector<int>(selected_));
    show_row(row);
    const QPoint center = rect_of(row).center();
    if (model_->has_row(row)) input_.tap(density_.device(QPointF(viewport()->mapTo(this, center))));
  });
}

void ReportView::set_content(ReportContent content) {
  glide_.end();
  selecting_ = true;
  QPalette colors = palette();
  colors.setColor(QPalette::Base, QColor(to_qt(content.background)));
  setPalette(colors);
  model_->set_content(std::move(content));
  selected_.clear();
  selectionModel()->clear();
  selecting_ = false;
  lay_out_columns();
  lay_out_unseen();
  doItemsLayout();
  verticalScrollBar()->setValue(0);
  horizontalScrollBar()->setValue(0);
  scroll_rest_ = 0;
}

// Columns that just fill the list do not scroll when a scroll bar takes some of their room.
void ReportView::lay_out_columns() {
  const int room = density_.device(width() - 2 * frameWidth());
  const bool sideways = model_->whole_width() > room;
  const int titles = titles_->wanted_height();
  setViewportMargins(0, titles, 0, 0);
  titles_->setVisible(titles > 0);
  place_titles();
  if (sideways == model_->is_sideways()) return;
  model_->set_sideways(sideways);
  setHorizontalScrollBarPolicy(sideways ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
  scheduleDelayedItemsLayout();
}

void ReportView::place_titles() {
  const int edge = frameWidth();
  titles_->setGeometry(edge, edge, width() - 2 * edge, titles_->wanted_height());
}

void ReportView::resizeEvent(QResizeEvent* event) {
  QListView::resizeEvent(event);
  lay_out_columns();
  focus_edge_->setGeometry(rect());
}

void ReportView::set_mark(int row, ReportMark mark) { model_->set_mark(row, mark); }

void ReportView::lay_out_unseen() {
  if (isVisible()) return;
  QResizeEvent event(size(), size());
  QCoreApplication::sendEvent(this, &event);
  doItemsLayout();
}

ReportPlace ReportView::report_place() const {
  return {{density_.device(width()), density_.device(height())},
          density_.device(verticalScrollBar()->sizeHint().width()),
          density_.device(frameWidth())};
}

void ReportView::select_rows(const std::vector<int>& rows) {
  QItemSelection selection;
  QModelIndex first;
  for (const int row : rows) {
    if (!model_->has_row(row)) continue;
    const QModelIndex index = model_->index(row);
    if (!first.isValid()) first = index;
    const bool follows = !selection.isEmpty() && selection.last().bottom() == row - 1;
    if (follows) {
      selection.last() = QItemSelectionRange(selection.last().topLeft(), index);
    } else {
      selection.append(QItemSelectionRange(index));
    }
  }
  selected_ = rows;
  selecting_ = true;
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  if (first.isValid())
    selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
  else
    selectionModel()->clearCurrentIndex();
  selecting_ = false;
}

QRect ReportView::rect_of(int row) const {
  return model_->has_row(row) ? visualRect(model_->index(row)) : QRect();
}

Rect ReportView::row_place(int row) const {
  const QRect rect = rect_of(row);
  if (rect.isEmpty()) return {};
  return place_in_window(*viewport(), rect, density_);
}

int ReportView::row_at(Point point) const {
  if (is_right_to_left()) point = mirrored(point, density_.device(width()));
  // The logical pixel that the device pixel lies in.
  const QPoint at(static_cast<int>(std::floor(point.x / density_.ratio)),
                  static_cast<int>(std::floor(point.y / density_.ratio)));
  const QPoint inside = viewport()->mapFrom(this, at);
  if (!viewport()->rect().contains(inside)) return -1;
  const QModelIndex index = indexAt(inside);
  return index.isValid() ? index.row() : -1;
}

void ReportView::scroll_pixels(int pixels) {
  glide_.end();
  scroll_on(pixels / density_.ratio);
}

bool ReportView::scroll_on(double logical_pixels) {
  scroll_rest_ += logical_pixels;
  const double whole = std::trunc(scroll_rest_);
  scroll_rest_ -= whole;
  QScrollBar& bar = *verticalScrollBar();
  const int wanted = bar.value() + static_cast<int>(whole);
  bar.setValue(wanted);
  return bar.value() == wanted;
}

void ReportView::glide(int pixels_per_second) { glide_.start(pixels_per_second / density_.ratio); }

void ReportView::show_row(int row) {
  glide_.end();
  const QRect rect = rect_of(row);
  if (rect.isEmpty()) return;
  QScrollBar& bar = *verticalScrollBar();
  const int below = rect.top() + rect.height() - viewport()->height();
  // A row higher than the list shows its beginning.
  const int by = rect.top() < 0 ? rect.top() : std::min(std::max(0, below), rect.top());
  if (by) bar.setValue(bar.value() + by);
}

// What the press does may end this list.
bool ReportView::take_press(QEvent& event) {
  use_keys(false);
  if (event.type() != QEvent::MouseButtonPress) setFocus(Qt::MouseFocusReason);
  glide_.halt();
  const QPointer<ReportView> alive(this);
  const bool taken = input_.take_pointer(event);
  if (alive) glide_.end();
  return taken;
}

bool ReportView::take_wheel(QWheelEvent& event) {
  const QPoint delta = event.angleDelta();
  const bool sideways = std::abs(delta.x()) > std::abs(delta.y());
  const QScrollBar& bar = sideways ? *horizontalScrollBar() : *verticalScrollBar();
  if (bar.maximum() > bar.minimum()) return QListView::viewportEvent(&event);
  event.ignore();  // a form around it may scroll as well
  input_.take_wheel(event);
  return true;
}

bool ReportView::take_viewport_event(QEvent* event) {
  switch (event->type()) {
    case QEvent::TabletPress:
    case QEvent::TouchBegin:
    case QEvent::MouseButtonPress:
      if (take_press(*event)) return true;
      break;
    case QEvent::Wheel:
      return take_wheel(static_cast<QWheelEvent&>(*event));
    default:
      if (input_.take_pointer(*event)) return true;
      break;
  }
  switch (event->type()) {
    // Other buttons, which the toolkit would select with.
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
      return true;
    default:
      return QListView::viewportEvent(event);
  }
}

void ReportView::keyPressEvent(QKeyEvent* event) {
  use_keys(true);
  if (!input_.take_key(*event)) event->ignore();
}

// The toolkit would put its current row somewhere.
void ReportView::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
  const Qt::FocusReason reason = event->reason();
  use_keys(keys_used_ || reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason);
}

void ReportView::focusOutEvent(QFocusEvent* event) {
  QListView::focusOutEvent(event);
  focus_edge_->hide();
}

// A list with an edge of its own shows the focus there; a pen needs no frame.
void ReportView::use_keys(bool keys) {
  keys_used_ = keys;
  focus_edge_->setVisible(keys && hasFocus() && frameWidth() == 0);
  if (focus_edge_->isVisible()) focus_edge_->raise();
}

}  // namespace orvello
