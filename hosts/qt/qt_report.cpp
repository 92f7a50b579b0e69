#include "hosts/qt/qt_report.h"

#include <QCoreApplication>
#include <QItemSelection>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTimer>
#include <cmath>

#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_text.h"
#include "hosts/qt/report_model.h"

namespace orvello {
namespace {

// Where the main window's points start; a list in a window of its own has no such place.
QPoint content_origin(const QWidget& window) {
  const auto* content = window.findChild<QWidget*>(QStringLiteral("content"));
  return content ? content->mapTo(&window, QPoint(0, 0)) : QPoint(0, 0);
}

}  // namespace

ReportView::ReportView(QWidget* parent, const Density& density, int control,
                       ControlInput::Report report)
    : QListView(parent),
      density_(density),
      input_(*viewport(), density, control, std::move(report)),
      model_(new ReportModel(this)) {
  setModel(model_);
  setItemDelegate(new ReportDelegate(*model_, density, this));
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(ScrollPerPixel);
  setResizeMode(Adjust);
  setSelectionMode(MultiSelection);
  setEditTriggers(NoEditTriggers);
  setAutoScroll(false);
  flatten_scroll_bar(*verticalScrollBar(), density);
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this](const QItemSelection& more, const QItemSelection& less) {
            if (selecting_) return;
            const QModelIndexList rows = more.isEmpty() ? less.indexes() : more.indexes();
            if (!rows.isEmpty()) selected_by_other(rows.first().row());
          });
}

// A screen reader selects in the model. The program does that itself: for it this is a tap.
void ReportView::selected_by_other(int row) {
  QTimer::singleShot(0, this, [this, row] {
    select_rows(std::vector<int>(selected_));
    show_row(row);
    const QPoint center = rect_of(row).center();
    if (model_->has_row(row)) input_.tap(density_.device(QPointF(center)));
  });
}

void ReportView::set_content(ReportContent content) {
  selecting_ = true;
  QPalette colors = palette();
  colors.setColor(QPalette::Base, QColor(to_qt(content.background)));
  setPalette(colors);
  model_->set_content(std::move(content));
  selected_.clear();
  selectionModel()->clear();
  selecting_ = false;
  lay_out_unseen();
  doItemsLayout();
  verticalScrollBar()->setValue(0);
  scroll_rest_ = 0;
}

void ReportView::lay_out_unseen() {
  if (isVisible()) return;
  QResizeEvent event(size(), size());
  QCoreApplication::sendEvent(this, &event);
  doItemsLayout();
}

ReportPlace ReportView::report_place() const {
  return {{density_.device(width()), density_.device(height())},
          density_.device(verticalScrollBar()->sizeHint().width()),
          0};
}

void ReportView::set_mark(int row, ReportMark mark) {
  if (model_->has_row(row)) model_->set_mark(row, mark);
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
  const QWidget* top = window();
  const QPoint at = viewport()->mapTo(top, rect.topLeft()) - content_origin(*top);
  const int x = density_.device(at.x()), y = density_.device(at.y());
  return {x, y, density_.device(at.x() + rect.width()) - x,
          density_.device(at.y() + rect.height()) - y};
}

int ReportView::row_at(Point point) const {
  // The logical pixel that the device pixel lies in.
  const QPoint at(static_cast<int>(std::floor(point.x / density_.ratio)),
                  static_cast<int>(std::floor(point.y / density_.ratio)));
  if (!viewport()->rect().contains(at)) return -1;
  const QModelIndex index = indexAt(at);
  return index.isValid() ? index.row() : -1;
}

void ReportView::scroll_pixels(int pixels) {
  scroll_rest_ += pixels / density_.ratio;
  const double whole = std::trunc(scroll_rest_);
  scroll_rest_ -= whole;
  verticalScrollBar()->setValue(verticalScrollBar()->value() + static_cast<int>(whole));
}

void ReportView::show_row(int row) {
  const QRect rect = rect_of(row);
  if (rect.isEmpty()) return;
  QScrollBar& bar = *verticalScrollBar();
  const int below = rect.top() + rect.height() - viewport()->height();
  // A row higher than the list shows its beginning.
  const int by = rect.top() < 0 ? rect.top() : std::min(std::max(0, below), rect.top());
  if (by) bar.setValue(bar.value() + by);
}

bool ReportView::viewportEvent(QEvent* event) {
  switch (event->type()) {
    case QEvent::TabletPress:
    case QEvent::TouchBegin:
      setFocus(Qt::MouseFocusReason);
      break;
    default:
      break;
  }
  if (input_.take_pointer(*event)) return true;
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
  if (!input_.take_key(*event)) event->ignore();
}

// The toolkit would put its current row somewhere.
void ReportView::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

}  // namespace orvello
