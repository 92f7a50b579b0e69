// The hidden window that hears of changes in the device's own store.
#pragma once

#include "hosts/win32/native_window.h"
#include "store/pim/pim_store.h"

namespace orvello {

class PimNotifyWindow : public PimWindow, private NativeWindow {
 public:
  explicit PimNotifyWindow(std::function<void(std::uint32_t)> told);

  std::intptr_t handle() const override { return reinterpret_cast<std::intptr_t>(window()); }
  void post(std::uint32_t message) override { PostMessageW(window(), message, 0, 0); }

 private:
  LRESULT message(UINT id, WPARAM wparam, LPARAM lparam) override;

  std::function<void(std::uint32_t)> told_;
};

// For PimPlatform.
std::unique_ptr<PimWindow> make_pim_window(std::function<void(std::uint32_t)> told);

}  // namespace orvello
