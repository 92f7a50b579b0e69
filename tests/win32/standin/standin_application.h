// The application object of either kind, and the folders it gives.
#pragma once

#include "tests/win32/standin/item_table.h"

namespace orvello::test {

inline constexpr IID kStandinApplicationInterface = {
    0x05058F22, 0x20BE, 0x11D2, {0x8F, 0x18, 0x00, 0x00, 0xF8, 0x7A, 0x43, 0x35}};
inline constexpr IID kStandinSecondInterface = {
    0xAF7D0DC7, 0x3D35, 0x424B, {0xAA, 0x60, 0x27, 0xA3, 0x8B, 0x8B, 0x62, 0x9E}};
inline constexpr CLSID kStandinClass = {
    0x05058F23, 0x20BE, 0x11D2, {0x8F, 0x18, 0x00, 0x00, 0xF8, 0x7A, 0x43, 0x35}};

class StandinApplication final : public StandinObject {
 public:
  StandinApplication();

  HWND window() const { return window_; }
  void be_told() { server().listen(this, {window_, true}); }

 protected:
  HRESULT get(int member, VARIANT& answer) override;
  HRESULT put(int, const VARIANT&) override { return DISP_E_MEMBERNOTFOUND; }
  HRESULT call(int member, const VARIANT* arguments, VARIANT& answer) override;
  IUnknown* other_interface(REFIID id) override;
  void let_go() override { server().deafen(this); }

 private:
  HRESULT item(std::int32_t oid, VARIANT& answer);

  bool logged_on_ = false;
  HWND window_ = nullptr;
};

class StandinFolder final : public StandinObject {
 public:
  StandinFolder(StandinApplication& application, int folder);
  ~StandinFolder() override;

 protected:
  HRESULT get(int member, VARIANT& answer) override;
  HRESULT put(int, const VARIANT&) override { return DISP_E_MEMBERNOTFOUND; }
  HRESULT call(int member, const VARIANT* arguments, VARIANT& answer) override;
  IUnknown* other_interface(REFIID id) override;
  void let_go() override;

 private:
  class Item;

  StandinRef<StandinApplication> application_;
  int folder_;
  std::vector<IDispatch*> to_send_;
  std::unique_ptr<Item> item_;
};

}  // namespace orvello::test
