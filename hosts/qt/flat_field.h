// The edge of what is filled in: edits, lists, choices. With the focus it is the accent colour and
// thicker.
#pragma once

#include <QEvent>
#include <QFrame>
#include <QWidget>
#include <algorithm>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"

namespace orvello {

inline constexpr int kFieldEdge = 2;  // design units that the edge takes at most

// The ground of a field and, above it, the edge; the text stands between the two.
void paint_field_ground(QWidget& field, const Density& density);
void paint_field_edge(QWidget& field, const Density& density, bool focused);

// A scroll area with that edge in place of the toolkit's frame.
template <typename Area>
class FlatArea : public GuardedView<Area> {
 public:
  FlatArea(QWidget* parent, const Density& density)
      : GuardedView<Area>(parent), field_density_(density) {
    this->setFrameStyle(QFrame::Box | QFrame::Plain);
    this->setLineWidth(std::max(1, density.scaled(kFieldEdge)));
  }

 protected:
  bool take_event(QEvent* event) override {
    if (event->type() == QEvent::Paint && this->frameWidth() > 0) {
      paint_field_ground(*this, field_density_);
      paint_field_edge(*this, field_density_, this->hasFocus());
      return true;
    }
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
      this->QWidget::update();
    return Area::event(event);
  }

 private:
  const Density& field_density_;
};

}  // namespace orvello
