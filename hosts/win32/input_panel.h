// Ink libraries and the on-screen keyboard, on a handheld; a desktop has neither.
#pragma once

#include <map>

#include "hosts/win32/handheld.h"
#include "ports/input_methods.h"

namespace orvello {

class Win32InputPanel : public InputMethods {
 public:
  Win32InputPanel() = default;
  explicit Win32InputPanel(Handheld handheld) : handheld_(std::move(handheld)) {}
  ~Win32InputPanel() override;
  Win32InputPanel(const Win32InputPanel&) = delete;
  Win32InputPanel& operator=(const Win32InputPanel&) = delete;

  bool load_library(TextView name) override;
  void free_library(TextView name) override;
  PanelAnswer raise_input_panel(const Rect& beside) override;
  void hide_input_panel() override;

 private:
  Handheld handheld_;
  std::map<Text, HMODULE> loaded_;
};

}  // namespace orvello
