#include "tests/win32/standin/item_table.h"

#include <cstring>

namespace orvello::test {
namespace {

constexpr ULONG kAllocate = 1;       // CEDB_ALLOWREALLOC
constexpr WORD kNotFound = 0x0100;   // CEDB_PROPNOTFOUND
constexpr DWORD kTextType = 0x001F;  // CEVT_LPWSTR

}  // namespace

// Values and the texts they point to lie in one block.
HRESULT StandinItem::GetProps(const DWORD* ids, ULONG flags, WORD count, StandinProperty** values,
                              ULONG* bytes, HANDLE heap) {
  StandinServer& server = StandinServer::of_process();
  if (const HRESULT failure = server.enter(L"GetProps"); FAILED(failure)) return failure;
  if (!ids || count == 0 || !values || !bytes) return E_INVALIDARG;
  std::size_t size = count * sizeof(StandinProperty);
  for (WORD i = 0; i < count; ++i)
    if (const Text* value = text(ids[i])) size += (value->size() + 1) * sizeof(char16_t);
  if (!(flags & kAllocate)) return E_INVALIDARG;
  auto* block = static_cast<std::byte*>(HeapAlloc(heap ? heap : GetProcessHeap(), 0, size));
  if (!block) return E_OUTOFMEMORY;
  auto* properties = reinterpret_cast<StandinProperty*>(block);
  std::byte* end = block + count * sizeof(StandinProperty);
  HRESULT done = S_OK;
  for (WORD i = 0; i < count; ++i) {
    const Text* value = text(ids[i]);
    properties[i] = {ids[i], 0, value ? WORD{0} : kNotFound, {}};
    if (!value || (ids[i] & 0xFFFF) != kTextType) {
      done = S_FALSE;
      continue;
    }
    properties[i].value.text = reinterpret_cast<wchar_t*>(end);
    const std::size_t length = (value->size() + 1) * sizeof(char16_t);
    std::memcpy(end, value->c_str(), length);
    end += length;
  }
  *values = properties;
  *bytes = static_cast<ULONG>(size);
  return done;
}

HRESULT StandinItem::SetProps(ULONG flags, WORD count, StandinProperty* values) {
  StandinServer& server = StandinServer::of_process();
  if (const HRESULT failure = server.enter(L"SetProps"); FAILED(failure)) return failure;
  if (flags != 0 || count == 0 || !values) return E_INVALIDARG;
  HRESULT done = S_OK;
  for (WORD i = 0; i < count; ++i)
    if (const HRESULT one = set(values[i]); one != S_OK) done = one;
  return done;
}

HRESULT StandinItem::Copy(StandinItemTable** copy) {
  *copy = nullptr;
  return E_NOTIMPL;
}

HRESULT StandinItem::OpenProperty(DWORD id, DWORD mode, IStream** stream) {
  if (!stream) return E_POINTER;
  *stream = nullptr;
  StandinServer& server = StandinServer::of_process();
  if (const HRESULT failure = server.enter(L"OpenProperty"); FAILED(failure)) return failure;
  if (id >> 16 != kStandinInk) return E_INVALIDARG;
  return open_ink(mode, stream);
}

}  // namespace orvello::test
