#include "hosts/win32/program/pim_notify_window.h"

namespace orvello {
namespace {

constexpr UINT kFirstRegistered = 0xC000;  // numbers from here on are other programs' words

}  // namespace

PimNotifyWindow::PimNotifyWindow(std::function<void(std::uint32_t)> told) : told_(std::move(told)) {
  Creation creation;
  creation.window_class = L"OrvelloStoreChanges";
  creation.style = WS_POPUP;  // never shown; a handheld has no windows for messages alone
  creation.place = {};
  create_own(creation);
}

LRESULT PimNotifyWindow::message(UINT id, WPARAM wparam, LPARAM lparam) {
  if (id < WM_APP || id >= kFirstRegistered) return by_default(id, wparam, lparam);
  told_(id);
  return 0;
}

std::unique_ptr<PimWindow> make_pim_window(std::function<void(std::uint32_t)> told) {
  return std::make_unique<PimNotifyWindow>(std::move(told));
}

}  // namespace orvello
