// Runs pages behind tabs.
#pragma once

#include <QPointer>
#include <memory>
#include <vector>

#include "hosts/qt/modal_layer.h"
#include "hosts/qt/qt_dialog.h"

namespace orvello {

class SheetWidget;

class QtSheet {
 public:
  QtSheet(QtMainWindow& window, const LocaleData& locale, const QString& title,
          const std::vector<SheetPage>& pages);
  ~QtSheet();
  QtSheet(const QtSheet&) = delete;
  QtSheet& operator=(const QtSheet&) = delete;

  int run();

 private:
  void add(const SheetPage& page, const LocaleData& locale, const Density& density);
  QRect place(QSize whole) const;
  void person_wants(void (QtSheet::*act)(int), int page);
  void turn_to(int page);
  void accept(int);
  void cancel(int);
  bool leave_shown();
  void show(int page);
  void end(int result);
  QtDialog& shown() { return *dialogs_[static_cast<std::size_t>(shown_)]; }

  const Density& density_;
  QPointer<ModalLayer> layer_;
  QPointer<SheetWidget> sheet_;
  const std::vector<SheetPage>& pages_;
  std::shared_ptr<EventQueue> queue_ = make_event_queue();
  std::vector<QPointer<FormWidget>> forms_;
  std::vector<std::unique_ptr<QtDialog>> dialogs_;
  int shown_ = 0;
  bool ended_ = false;
  int result_ = kSheetCancelled;
};

}  // namespace orvello
