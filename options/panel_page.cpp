#include "options/panel_page.h"

#include <algorithm>

namespace orvello {
namespace {

using Event = DialogEvent::Kind;
using Kind = ControlTemplate::Kind;

constexpr int kPanelMilliseconds = 500;

bool takes_text(Kind kind) {
  return kind == Kind::edit || kind == Kind::multi_line_edit || kind == Kind::combo;
}

}  // namespace

PanelPage::PanelPage(const DialogTemplate& dialog, std::unique_ptr<DialogProcedure> page,
                     InputMethods& input)
    : page_(std::move(page)), input_(input) {
  for (const ControlTemplate& control : dialog.controls)
    if (takes_text(control.kind)) text_controls_.push_back(control.id);
}

void PanelPage::handle(Dialog& dialog, const DialogEvent& event) {
  switch (event.kind) {
    case Event::page_shown:
      dialog.set_timer(kPanelTimer, kPanelMilliseconds);
      break;
    case Event::timer:
      if (event.control != kPanelTimer) break;
      dialog.set_timer(kPanelTimer, 0);
      return request(dialog);
    case Event::focus_gained:
      focused_ = event.control;
      request(dialog);
      break;
    case Event::page_left:
      dialog.set_timer(kPanelTimer, 0);
      focused_ = 0;
      request(dialog);
      break;
    case Event::close:
      input_.hide_input_panel();
      break;
    default:
      break;
  }
  page_->handle(dialog, event);
}

void PanelPage::request(Dialog& dialog) {
  const bool text =
      std::find(text_controls_.begin(), text_controls_.end(), focused_) != text_controls_.end();
  if (text)
    input_.raise_input_panel(dialog.place(focused_));
  else
    input_.hide_input_panel();
}

}  // namespace orvello
