#include "app/modality.h"

#include <utility>

#include "app/own_messages.h"

namespace orvello {

Modality::Modality(const Host& host)
    : host_(host), counted_{host.clock,    host.locale, host.registry, host.files, host.databases,
                            host.surfaces, host.window, host.menu_bar, boxes_,     dialogs_,
                            host.store,    host.input,  host.shell} {}

void Modality::when_free(std::function<void()> call) {
  waiting_.push_back(std::move(call));
  call_later();
}

void Modality::run_next() {
  if (!free() || waiting_.empty()) return;
  const std::function<void()> call = std::move(waiting_.front());
  waiting_.pop_front();
  call_later();  // ignored while this one has something modal open
  call();
}

void Modality::ended() {
  --standing_;
  call_later();
}

void Modality::call_later() {
  if (free() && !waiting_.empty()) host_.window.post({kMessageFree, 0, {}, 0});
}

BoxAnswer Modality::Boxes::show(TextView text, TextView caption, BoxIcon icon, BoxButtons buttons,
                                bool owned) {
  const Standing standing(modality_);
  return modality_.host_.boxes.show(text, caption, icon, buttons, owned);
}

void Modality::Boxes::beep(Beep beep) { modality_.host_.boxes.beep(beep); }

int Modality::CountedDialogs::run_modal(const DialogTemplate& dialog, DialogProcedure& procedure) {
  const Standing standing(modality_);
  return modality_.host_.dialogs.run_modal(dialog, procedure);
}

int Modality::CountedDialogs::run_sheet(TextView title, const std::vector<SheetPage>& pages) {
  const Standing standing(modality_);
  return modality_.host_.dialogs.run_sheet(title, pages);
}

std::unique_ptr<Dialog> Modality::CountedDialogs::open_modeless(const DialogTemplate& dialog,
                                                                DialogProcedure& procedure) {
  return modality_.host_.dialogs.open_modeless(dialog, procedure);
}

}  // namespace orvello
