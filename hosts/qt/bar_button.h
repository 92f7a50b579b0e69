// One button of the menu bar, drawn by itself.
#pragma once

#include <QAbstractButton>
#include <QImage>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"
#include "ports/menu_bar.h"

namespace orvello {

class BarButton : public Guarded<QAbstractButton> {
 public:
  BarButton(QWidget* parent, const Density& density, const MenuBarButton& button, QImage image);

  const MenuBarButton& content() const { return content_; }
  bool shows_image() const;
  bool has_menu() const;
  void set_menu(const std::vector<MenuItem>& items) { content_.menu = items; }
  void set_caption(const QString& text);
  int text_width() const;
  // Stands out; an image button then also shows its text, in the room beside the image.
  void highlight(bool highlighted, const QString& hint);
  bool is_highlighted() const { return highlighted_; }
  // Opens upwards; the chosen item's command, 0 for none.
  std::uint32_t run_menu();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  void paint_caption(QPainter& painter);
  void paint_image(QPainter& painter);
  int image_side() const;  // logical pixels

  const Density& density_;
  MenuBarButton content_;
  QImage image_;
  bool hovered_ = false;
  bool highlighted_ = false;
};

}  // namespace orvello
