#include "tests/win32/standin/string_watch.h"

#include <oleauto.h>

namespace orvello::test {

void StringWatch::begin() {
  if (begun_) return;
  begun_ = true;
  // Strings freed would else wait in a cache of their own.
  using SetNoCache = void(WINAPI*)();
  const auto set_no_cache = reinterpret_cast<SetNoCache>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"oleaut32.dll"), "SetOaNoCache")));
  if (set_no_cache) set_no_cache();
  CoRegisterMallocSpy(this);
  SysFreeString(give(u"first"));  // where in its block a string begins
  forget();
}

HRESULT StringWatch::QueryInterface(REFIID id, void** object) {
  if (id != IID_IUnknown && id != IID_IMallocSpy) return *object = nullptr, E_NOINTERFACE;
  *object = static_cast<IMallocSpy*>(this);
  return S_OK;
}

void* StringWatch::PostAlloc(void* block) {
  if (giving_) given_ = block;
  return block;
}

// A freed string's block stays where it is, so that its address means that string alone.
void* StringWatch::PreFree(void* block, BOOL) {
  if (clearing_) return block;
  const auto found = blocks_.find(block);
  if (found == blocks_.end()) return block;
  if (found->second == State::freed) {
    ++freed_twice_;
    return nullptr;
  }
  --live_;
  if (!keeps_) {
    blocks_.erase(found);
    return block;
  }
  found->second = State::freed;
  return nullptr;
}

// The string moves, and with it the caller's duty.
SIZE_T StringWatch::PreRealloc(void* block, SIZE_T size, void** resized, BOOL) {
  *resized = block;
  if (const auto found = blocks_.find(block); found != blocks_.end()) {
    if (found->second == State::live) --live_;
    blocks_.erase(found);
  }
  return size;
}

BSTR StringWatch::give(TextView text) {
  giving_ = true;
  given_ = nullptr;
  const BSTR string = SysAllocStringLen(reinterpret_cast<const wchar_t*>(text.data()),
                                        static_cast<UINT>(text.size()));
  giving_ = false;
  if (!string || !given_) return string;
  offset_ = reinterpret_cast<std::byte*>(string) - static_cast<std::byte*>(given_);
  blocks_[given_] = State::live;
  ++live_;
  return string;
}

void StringWatch::take(BSTR text) {
  if (!text || offset_ == 0) return;
  void* const block = reinterpret_cast<std::byte*>(text) - offset_;
  const auto [found, fresh] = blocks_.emplace(block, State::live);
  if (fresh) ++live_;
  if (found->second == State::freed) ++freed_twice_;
}

void StringWatch::forget() {
  clearing_ = true;
  for (const auto& [block, state] : blocks_)
    if (state == State::freed) CoTaskMemFree(block);
  clearing_ = false;
  blocks_.clear();
  live_ = 0;
  freed_twice_ = 0;
}

}  // namespace orvello::test
