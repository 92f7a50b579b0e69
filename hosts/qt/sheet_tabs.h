// The tabs of a sheet in one row, as wide as their texts.
#pragma once

#include <QTabBar>
#include <functional>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"

namespace orvello {

class SheetTabs : public Guarded<QTabBar> {
 public:
  SheetTabs(QWidget* parent, const Density& density);

  // A person wants another page; whoever shows it calls `show_tab`.
  std::function<void(int)> wanted;

  void show_tab(int index);
  int shown() const { return shown_; }

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent*) override {}
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  QSize tabSizeHint(int index) const override;
  QSize minimumTabSizeHint(int index) const override { return tabSizeHint(index); }
  void paintEvent(QPaintEvent* event) override;

 private:
  const Density& density_;
  int shown_ = 0;
};

}  // namespace orvello
