// The widgets of the top-level window: the content area, which shows the program's picture, and
// below it the place of the menu bar.
#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"
#include "hosts/qt/qt_pointer.h"
#include "hosts/qt/wheel_notches.h"
#include "ports/main_window.h"

namespace orvello {

class HoverText;

// What the widgets tell. Points are device pixels.
struct ShellEvents {
  std::function<bool(const Message&)> send;
  std::function<void()> close_wanted;
  std::function<void()> resized;  // some time after the last of a row of changes
  std::function<void(std::vector<std::string>)> files_dropped;
  std::function<void()> desktop_changed;  // its colours or its texts
  std::function<void()> activated;
};

class ContentArea : public Guarded<QWidget> {
 public:
  ContentArea(QWidget* parent, const Density& density, ShellEvents& events);
  QtPointer& pointer() { return pointer_; }
  const Density& density() const { return density_; }
  void set_accessible_view(AccessibleView* view);
  AccessibleView* accessible_view() const { return accessible_view_; }
  void note_accessible_change();
  int accessible_version() const { return accessible_version_; }  // counts the changes

 protected:
  bool take_event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  bool is_below_sheet() const;
  bool send_pointer(const QtPointer::Step& step);
  bool ask_for_menu(const QMouseEvent& event);
  Point turned_point(Point point) const;
  bool send_key(const QKeyEvent& event, std::uint32_t id);

  const Density& density_;
  ShellEvents& events_;
  QtPointer pointer_;
  AccessibleView* accessible_view_ = nullptr;
  int accessible_version_ = 0;
  WheelNotches wheel_;
};

class Shell : public Guarded<QWidget> {
 public:
  Shell(const Density& density, ShellEvents& events);
  ContentArea& content() { return *content_; }

  // The bar stands at the bottom edge; null: none.
  void set_bar(QWidget* bar, int device_height);
  // What is modal covers everything, one above the other: only the last takes the pointer and the
  // keyboard, and all that lies below is off until it is dropped, whatever is made or moved there
  // meanwhile. `focus_below` gets the keyboard back then.
  // One that lets presses through leaves what lies below to the pointer, where it is not itself.
  void push_cover(QWidget* cover, QWidget* focus_below, bool lets_through = false);
  void drop_cover(const QWidget* cover);
  // What keeps the pointer from a widget of this window; null: nothing does.
  QWidget* cover_over(const QWidget& widget) const;
  QWidget* cover() const { return covers_.empty() ? nullptr : covers_.back().widget.data(); }
  // Gives the focus to a widget of this window, below a cover as soon as that is dropped.
  void give_focus(QWidget& widget);
  void add_sheet(QWidget* sheet);  // fills the content area
  void place_content(const Rect& place);
  void lay_out();  // content and bar in their usual places
  void show_label(const HoverLabel& label);
  void hide_label();
  void show_notice(const HoverLabel& notice);
  void hide_notice();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  bool take_event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Cover {
    QPointer<QWidget> widget;
    QPointer<QWidget> focus_below;
    bool lets_through = false;
  };
  void keep_order();
  void restore_focus(QWidget* wanted);

  const Density& density_;
  ShellEvents& events_;
  ContentArea* content_;
  QWidget* bar_ = nullptr;
  std::vector<Cover> covers_;
  void show_text(HoverText*& widget, const HoverLabel& label);

  HoverText* label_ = nullptr;
  HoverText* notice_ = nullptr;
  int bar_height_ = 0;
  QTimer resize_pause_;
};

}  // namespace orvello
