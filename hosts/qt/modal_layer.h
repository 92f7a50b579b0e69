// Covers the window while something modal is shown on it, or is a window of its own when there is
// none to cover. Whatever opens while another one stands opens above it.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/qt_main_window.h"

class QEventLoop;

namespace orvello {

class ModalLayer : public Guarded<QWidget> {
 public:
  explicit ModalLayer(QtMainWindow& window);

  // Where the sheet stands inside the layer, given the layer's size; asked again when that changes.
  std::function<QRect(QSize)> place_sheet;
  std::function<void()> shown;  // the sheet is seen: it may choose where the focus is
  std::function<void()> close_wanted;
  std::function<void()> accept_wanted;  // Return, when no button has the focus
  // A popup's: a press beside it, and a release of what was pressed before it opened, at a place
  // of the screen. With the first of them the window behind is not dimmed.
  std::function<void()> pressed_beside;
  std::function<void(QPointF)> released;
  bool lets_presses_through = false;  // those beside the sheet go on to what lies there

  bool covers_window() const { return !isWindow(); }
  // Shows the sheet, a child of the layer, until `end`.
  void run(QWidget& sheet, QSize own_window);
  // The first part of that: everything gets its size and place, unseen.
  void prepare(QWidget& sheet, QSize own_window);
  void end();
  // Gives the window back what was there before; also when it was never run.
  void uncover();
  void leave();  // and goes away, with nothing told any more

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  bool filter_event(QObject* object, QEvent* event) override;

 private:
  void place();

  QtMainWindow& window_;
  QPointer<QWidget> focus_before_;
  QWidget* sheet_ = nullptr;
  QEventLoop* loop_ = nullptr;
  bool ended_ = false;
};

// Gives a control the focus, below something modal as soon as that is over.
void give_focus(QWidget& widget);
// Whether a widget stands on a modal layer, or below the one that its window shows.
bool is_modal(const QWidget& widget);
bool is_covered(const QWidget& widget);
// Tells the layer above a covered widget that the pointer was let go at a point of the widget.
void pass_release_on(const QWidget& widget, QPointF place);

}  // namespace orvello
