#include "hosts/qt/sheet_widget.h"

#include <QPainter>
#include <QShortcut>
#include <algorithm>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/flat_button.h"
#include "hosts/qt/form_widget.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/sheet_tabs.h"
#include "hosts/qt/tab_strip.h"
#include "hosts/qt/title_strip.h"

namespace orvello {
namespace {

constexpr int kOkWidth = 44, kButtonWidth = 72;  // design units

}  // namespace

SheetWidget::SheetWidget(QWidget* parent, const Density& density, const QString& title)
    : Guarded(parent),
      density_(density),
      title_(title),
      strip_(new TabStrip(this, density)),
      close_(make_close_button(*this, density)),
      ok_(new FlatButton(QStringLiteral("OK"), this, density)),
      cancel_(new FlatButton(QStringLiteral("Cancel"), this, density)) {
  setFont(widget_font(density));
  setAutoFillBackground(true);
  setAttribute(Qt::WA_NoMousePropagation);
  setAccessibleName(title);
  setObjectName(QStringLiteral("sheet"));
  ok_->setObjectName(QStringLiteral("ok"));
  ok_->setDefault(true);
  ok_->setFont(widget_font(density, kTextSize, true));
  cancel_->setObjectName(QStringLiteral("cancel"));
  strip_->tabs().wanted = [this](int page) { page_wanted(page); };
  on_signal(ok_, &QPushButton::clicked, this, [this] { ok_wanted(); });
  on_signal(cancel_, &QPushButton::clicked, this, [this] { cancel_wanted(); });
  on_signal(close_, &QAbstractButton::clicked, this, [this] { cancel_wanted(); });
  turn_by_key("Ctrl+Tab", 1);
  turn_by_key("Ctrl+PgDown", 1);
  turn_by_key("Ctrl+Shift+Tab", -1);
  turn_by_key("Ctrl+PgUp", -1);
}

// Round in a circle, wherever the focus is: a press on what takes none leaves it beside the sheet.
void SheetWidget::turn_by_key(const char* keys, int by) {
  auto* shortcut = new QShortcut(QKeySequence(QLatin1String(keys)), this);
  shortcut->setContext(Qt::WindowShortcut);
  on_signal(shortcut, &QShortcut::activated, this, [this, by] {
    const int count = strip_->tabs().count();
    if (count > 1) page_wanted((strip_->tabs().shown() + by + count) % count);
  });
}

void SheetWidget::add_page(FormWidget* page, const QString& title) {
  page->setParent(this);
  page->hide();
  pages_.push_back(page);
  strip_->tabs().addTab(title);
}

void SheetWidget::show_page(int page) {
  strip_->tabs().show_tab(page);
  strip_->keep_in_sight();
  pages_[static_cast<std::size_t>(page)]->show();
  pages_[static_cast<std::size_t>(page)]->raise();
}

void SheetWidget::hide_others(int page) {
  for (std::size_t i = 0; i < pages_.size(); ++i)
    if (static_cast<int>(i) != page) pages_[i]->hide();
}

void SheetWidget::name_page(int page, const QString& title) {
  strip_->tabs().setTabText(page, title);
  strip_->keep_in_sight();
}

int SheetWidget::tabs_width() const { return strip_->sizeHint().width(); }

int SheetWidget::title_height() const { return density_.scaled(kTouchHeight + 2); }
int SheetWidget::buttons_height() const { return density_.scaled(kTouchHeight + 4 * kGrid); }

int SheetWidget::frame_height(bool roomy) const {
  return title_height() + strip_->sizeHint().height() + (roomy ? buttons_height() : 0);
}

void SheetWidget::lay_out() {
  const int top = title_height(), tall = strip_->sizeHint().height();
  const int line = std::max(1, density_.scaled(1)), grid = density_.scaled(kGrid);
  const int bottom = roomy_ ? height() - buttons_height() : height();
  const auto place = [this](QWidget& widget, int x, int y, int wide, int high) {
    widget.setGeometry(turned(QRect(x, y, wide, high), width()));
  };
  place(*close_, width() - top, 0, top, top - line);
  strip_->setGeometry(0, top, width(), tall);
  strip_->keep_in_sight();
  const int touch = density_.scaled(kTouchHeight), button = density_.scaled(kButtonWidth);
  if (roomy_) {
    const int y = bottom + (height() - bottom - touch) / 2, x = width() - 2 * grid - button;
    place(*cancel_, x, y, button, touch);
    place(*ok_, x - 2 * grid - button, y, button, touch);
  } else {
    const int wide = density_.scaled(kOkWidth);
    place(*ok_, width() - top - wide, 0, wide, top - line);
  }
  cancel_->setVisible(roomy_);
  for (FormWidget* page : pages_) {
    page->setGeometry(0, top + tall, width(), std::max(0, bottom - top - tall));
    page->lay_out();
  }
}

void SheetWidget::resizeEvent(QResizeEvent*) { lay_out(); }

void SheetWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const int right = roomy_ ? -1 : title_height() + density_.scaled(kOkWidth);
  paint_title(painter, QRect(0, 0, width(), title_height()), density_, title_, right);
  if (!roomy_) return;
  const int line = std::max(1, density_.scaled(1));
  painter.fillRect(0, height() - buttons_height(), width(), line, qt_color(density_.colors->line));
}

}  // namespace orvello
