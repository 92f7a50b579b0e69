// What a field drops down: it stands over the form inside the window until a press goes beside it
// or the field loses the focus, which stays there all the time.
#pragma once

#include <QWidget>
#include <functional>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"

namespace orvello {

class DropPanel : public Guarded<QWidget> {
 public:
  // `content` becomes the panel's. It is shown at once, below the field or above it, as large as is
  // wanted and as the window allows; heights are in steps above the first one.
  DropPanel(QWidget& field, const Density& density, QWidget* content);

  void open(QSize wanted, int least_height);
  void close_soon();  // also from an event of the content

  std::function<void()> closed;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  bool take_event(QEvent* event) override;
  bool filter_event(QObject* object, QEvent* event) override;

 private:
  void place(QSize wanted, int least_height);

  QWidget& field_;
  const Density& density_;
  QWidget* content_;
};

}  // namespace orvello
