#include "tests/win32/standin/standin_ink.h"

#include <algorithm>
#include <cstring>

namespace orvello::test {

HRESULT StandinInk::enter(const wchar_t* name) const {
  return dead("used") ? E_UNEXPECTED : server().enter(name);
}

HRESULT StandinInk::QueryInterface(REFIID id, void** object) {
  *object = nullptr;
  if (id != IID_IUnknown && id != IID_IStream && id != IID_ISequentialStream) return E_NOINTERFACE;
  AddRef();
  *object = static_cast<IStream*>(this);
  return S_OK;
}

HRESULT StandinInk::Read(void* into, ULONG count, ULONG* done) {
  if (done) *done = 0;
  if (const HRESULT failure = enter(L"Read"); FAILED(failure)) return failure;
  // Not all at once: a stream may give less than it was asked for.
  const std::size_t given = std::min<std::size_t>({count, bytes_.size() - place_, 4096});
  std::memcpy(into, bytes_.data() + place_, given);
  place_ += given;
  if (done) *done = static_cast<ULONG>(given);
  return given == 0 && count > 0 ? S_FALSE : S_OK;
}

HRESULT StandinInk::Write(const void* from, ULONG count, ULONG* done) {
  if (done) *done = 0;
  if (const HRESULT failure = enter(L"Write"); FAILED(failure)) return failure;
  if (!writes_) return STG_E_ACCESSDENIED;
  bytes_.resize(std::max(bytes_.size(), place_ + count));
  std::memcpy(bytes_.data() + place_, from, count);
  place_ += count;
  if (done) *done = count;
  return S_OK;
}

HRESULT StandinInk::Seek(LARGE_INTEGER by, DWORD origin, ULARGE_INTEGER* place) {
  if (const HRESULT failure = enter(L"Seek"); FAILED(failure)) return failure;
  const auto from = origin == STREAM_SEEK_SET   ? 0
                    : origin == STREAM_SEEK_CUR ? static_cast<LONGLONG>(place_)
                                                : static_cast<LONGLONG>(bytes_.size());
  const LONGLONG to = from + by.QuadPart;
  if (to < 0 || to > static_cast<LONGLONG>(bytes_.size())) return STG_E_INVALIDFUNCTION;
  place_ = static_cast<std::size_t>(to);
  if (place) place->QuadPart = static_cast<ULONGLONG>(to);
  return S_OK;
}

HRESULT StandinInk::SetSize(ULARGE_INTEGER size) {
  if (const HRESULT failure = enter(L"SetSize"); FAILED(failure)) return failure;
  if (!writes_) return STG_E_ACCESSDENIED;
  bytes_.resize(static_cast<std::size_t>(size.QuadPart));
  place_ = std::min(place_, bytes_.size());
  return S_OK;
}

HRESULT StandinInk::Commit(DWORD flags) {
  if (const HRESULT failure = enter(L"Commit"); FAILED(failure)) return failure;
  if (flags != 0) return E_INVALIDARG;
  if (writes_) item_->set_ink(bytes_);
  return S_OK;
}

}  // namespace orvello::test
