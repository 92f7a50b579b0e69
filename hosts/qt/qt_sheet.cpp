#include "hosts/qt/qt_sheet.h"

#include <algorithm>

#include "draw/form_layout.h"
#include "hosts/qt/qt_text.h"
#include "hosts/qt/sheet_widget.h"

namespace orvello {

using Event = DialogEvent::Kind;

QtSheet::QtSheet(QtMainWindow& window, const LocaleData& locale, const QString& title,
                 const std::vector<SheetPage>& pages)
    : density_(window.form_density()),
      layer_(new ModalLayer(window)),
      sheet_(new SheetWidget(layer_, density_, title)),
      pages_(pages) {
  layer_->setWindowTitle(title);
  for (const SheetPage& page : pages) add(page, locale, density_);
  sheet_->page_wanted = [this](int page) { person_wants(&QtSheet::turn_to, page); };
  sheet_->ok_wanted = [this] { person_wants(&QtSheet::accept, 0); };
  sheet_->cancel_wanted = [this] { person_wants(&QtSheet::cancel, 0); };
  // A page's own default button comes before the sheet's.
  layer_->accept_wanted = [this] {
    if (!forms_[static_cast<std::size_t>(shown_)]->press_default()) sheet_->ok_wanted();
  };
  layer_->close_wanted = sheet_->cancel_wanted;
  layer_->place_sheet = [this](QSize whole) { return place(whole); };
  layer_->shown = [this] { show(0); };
}

QtSheet::~QtSheet() {
  queue_->stop();
  if (layer_) layer_->leave();
}

void QtSheet::add(const SheetPage& page, const LocaleData& locale, const Density& density) {
  auto* form = new FormWidget(sheet_, density, locale, page.dialog, false);
  const int index = static_cast<int>(dialogs_.size());
  auto dialog = std::make_unique<QtDialog>(form, density, *page.procedure, queue_);
  dialog->closed = [this](int result) { end(result); };
  dialog->titled = [this, index](const QString& title) {
    if (sheet_) sheet_->name_page(index, title);
  };
  sheet_->add_page(form, to_qt(page.dialog.title));
  forms_.push_back(form);
  dialogs_.push_back(std::move(dialog));
}

QRect QtSheet::place(QSize whole) const {
  if (!sheet_) return {};
  const Size room{whole.width(), whole.height()};
  const auto place_with = [&](bool roomy) {
    return to_qt(sheet_place(pages_, density_.unit(), sheet_->frame_height(roomy), room));
  };
  // A sheet that fills a handheld has no room for a row of buttons.
  const bool roomy = !layer_->isWindow() && place_with(false).size() != whole;
  sheet_->set_roomy(roomy);
  if (layer_->isWindow()) return QRect(QPoint(0, 0), whole);
  QRect place = place_with(roomy);
  // Tabs need not move where there is room for all of them.
  const int wider = std::min(whole.width(), sheet_->tabs_width()) - place.width();
  if (wider > 0) place.adjust(-wider / 2, 0, wider - wider / 2, 0);
  return place;
}

int QtSheet::run() {
  Size own;
  for (const SheetPage& page : pages_) {
    const Size size = design_size(page.dialog);
    own = {std::max(own.width, size.width), std::max(own.height, size.height)};
  }
  const QSize own_window(density_.scaled(own.width),
                         density_.scaled(own.height) + sheet_->frame_height(true));
  layer_->prepare(*sheet_, own_window);
  sheet_->lay_out();
  for (const auto& dialog : dialogs_) {
    dialog->start();
    if (ended_) return result_;
  }
  layer_->run(*sheet_, own_window);
  return result_;
}

// What a person does comes behind what is told already.
void QtSheet::person_wants(void (QtSheet::*act)(int), int page) {
  queue_->add([this, act, page] {
    if (!ended_ && sheet_) (this->*act)(page);
  });
}

void QtSheet::show(int page) {
  shown_ = page;
  sheet_->show_page(page);
  shown().tell(Event::page_shown);
  forms_[static_cast<std::size_t>(page)]->come(true);
  // Not before: the toolkit would look for another control to have the focus.
  sheet_->hide_others(page);
}

bool QtSheet::leave_shown() {
  if (!shown().procedure().may_leave(shown()) || ended_ || !sheet_) return false;
  forms_[static_cast<std::size_t>(shown_)]->go();
  shown().tell(Event::page_left);
  return true;
}

void QtSheet::turn_to(int page) {
  if (page == shown_ || page < 0 || page >= static_cast<int>(dialogs_.size())) return;
  if (!leave_shown()) return;
  // The page that is left may close the sheet when it hears of it.
  queue_->add([this, page] {
    if (!ended_ && sheet_) show(page);
  });
}

void QtSheet::accept(int) {
  if (!leave_shown()) return;
  for (const auto& dialog : dialogs_) dialog->tell(Event::page_applied);
  queue_->add([this] { end(kSheetOk); });
}

void QtSheet::cancel(int) {
  if (!shown().procedure().may_close(shown()) || ended_) return;
  for (const auto& dialog : dialogs_) dialog->tell(Event::close);
  queue_->add([this] { end(kSheetCancelled); });
}

void QtSheet::end(int result) {
  if (ended_) return;
  ended_ = true;
  result_ = result;
  for (const auto& dialog : dialogs_) dialog->end(result);
  if (layer_) layer_->end();
}

}  // namespace orvello
