// What a sheet consists of: a title, tabs, the pages' place, OK and Cancel.
#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"

class QAbstractButton;

namespace orvello {

class FlatButton;
class FormWidget;
class TabStrip;

class SheetWidget : public Guarded<QWidget> {
 public:
  SheetWidget(QWidget* parent, const Density& density, const QString& title);

  std::function<void()> ok_wanted, cancel_wanted;
  std::function<void(int)> page_wanted;

  void add_page(FormWidget* page, const QString& title);
  void show_page(int page);  // above the one that was shown, which still has its focus
  void hide_others(int page);
  void name_page(int page, const QString& title);
  // What is not a page's: with a row of buttons below it where there is room, else OK stands in the
  // title.
  int frame_height(bool roomy) const;
  int tabs_width() const;  // of all of them
  void set_roomy(bool roomy) { roomy_ = roomy; }
  // All pages have their size, also those that are not seen.
  void lay_out();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  int title_height() const;
  int buttons_height() const;
  void turn_by_key(const char* keys, int by);

  const Density& density_;
  QString title_;
  bool roomy_ = false;
  TabStrip* strip_;
  QAbstractButton* close_;
  FlatButton* ok_;
  FlatButton* cancel_;
  std::vector<FormWidget*> pages_;
};

}  // namespace orvello
