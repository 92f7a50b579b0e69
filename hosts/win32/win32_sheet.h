// Runs pages behind tabs.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "hosts/win32/modal_stage.h"
#include "hosts/win32/sheet_window.h"
#include "hosts/win32/win32_dialog.h"

namespace orvello {

class Win32Sheet {
 public:
  // `look` and the pages outlive it; `take_looks` brings the look up to date.
  Win32Sheet(Win32Window& window, const FormLook& look, Text title,
             const std::vector<SheetPage>& pages, std::function<void()> take_looks);
  ~Win32Sheet();
  Win32Sheet(const Win32Sheet&) = delete;
  Win32Sheet& operator=(const Win32Sheet&) = delete;

  int run();

 private:
  bool make();
  bool add(const SheetPage& page);
  void put();
  void person_wants(void (Win32Sheet::*act)(int), int page);
  void turn_to(int page);
  void accept(int);
  void cancel(int);
  bool leave_shown();
  void show(int page);
  void end(int result);
  Win32Dialog& shown() { return *dialogs_[static_cast<std::size_t>(shown_)]; }

  Win32Window& window_;
  const FormLook& look_;
  Text title_;
  const std::vector<SheetPage>& pages_;
  std::function<void()> take_looks_;
  ModalStage stage_;
  std::shared_ptr<SheetWindow> sheet_;
  std::shared_ptr<EventQueue> queue_;
  std::vector<std::unique_ptr<Win32Dialog>> dialogs_;
  int shown_ = 0;
  int result_ = kSheetCancelled;
  bool ended_ = false;
};

}  // namespace orvello
