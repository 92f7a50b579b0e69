// Tabs that are wider than their place: arrows at its ends move them, and the shown one is always
// in sight.
#pragma once

#include <QWidget>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"

namespace orvello {

class SheetTabs;
class StripArrow;

class TabStrip : public Guarded<QWidget> {
 public:
  TabStrip(QWidget* parent, const Density& density);

  SheetTabs& tabs() { return *tabs_; }
  QSize sizeHint() const override;  // of all tabs
  void keep_in_sight();  // the shown tab, after the tabs or their texts have changed, too

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  QRect window_rect() const;  // what is seen of the tabs
  int most() const;           // how far they can be moved
  void move_to(int left);

  const Density& density_;
  QWidget* window_;
  SheetTabs* tabs_;
  StripArrow* arrows_[2];
  int left_ = 0;
};

}  // namespace orvello
