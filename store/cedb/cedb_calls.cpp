#include "store/cedb/cedb_calls.h"

#include <memory>

namespace orvello {
namespace {

// Finds the call of this name; false when the library has none.
template <typename Answer, typename... Arguments>
bool look_up(HMODULE library, const char* name, std::function<Answer(Arguments...)>& call) {
  const FARPROC found = ::GetProcAddress(library, name);
  // By way of void*: the two are no function types that a conversion is defined between.
  if (found) call = reinterpret_cast<Answer(WINAPI*)(Arguments...)>(reinterpret_cast<void*>(found));
  return found != nullptr;
}

}  // namespace

bool add_turns(CedbCalls& calls) {
  std::shared_ptr<void> turn(::CreateMutexW(nullptr, FALSE, L"Orvello record databases"),
                             [](void* handle) {
                               if (handle) ::CloseHandle(handle);
                             });
  if (!turn) return false;
  calls.take_turn = [turn](DWORD milliseconds) {
    const DWORD answer = ::WaitForSingleObject(turn.get(), milliseconds);
    return answer == WAIT_OBJECT_0 || answer == WAIT_ABANDONED;
  };
  calls.end_turn = [turn] { ::ReleaseMutex(turn.get()); };
  return true;
}

std::optional<CedbCalls> device_cedb_calls() {
  // The library of the whole system: it stays loaded for as long as the program runs.
  const HMODULE library = ::LoadLibraryW(L"coredll.dll");
  if (!library) return std::nullopt;
  CedbCalls calls;
  const bool complete = look_up(library, "CeMountDBVol", calls.CeMountDBVol) &&
                        look_up(library, "CeUnmountDBVol", calls.CeUnmountDBVol) &&
                        look_up(library, "CeFlushDBVol", calls.CeFlushDBVol) &&
                        look_up(library, "CeFindFirstDatabaseEx", calls.CeFindFirstDatabaseEx) &&
                        look_up(library, "CeFindNextDatabaseEx", calls.CeFindNextDatabaseEx) &&
                        look_up(library, "CeOidGetInfoEx", calls.CeOidGetInfoEx) &&
                        look_up(library, "CeCreateDatabaseEx", calls.CeCreateDatabaseEx) &&
                        look_up(library, "CeSetDatabaseInfoEx", calls.CeSetDatabaseInfoEx) &&
                        look_up(library, "CeDeleteDatabaseEx", calls.CeDeleteDatabaseEx) &&
                        look_up(library, "CeOpenDatabaseEx", calls.CeOpenDatabaseEx) &&
                        look_up(library, "CeReadRecordPropsEx", calls.CeReadRecordPropsEx) &&
                        look_up(library, "CeWriteRecordProps", calls.CeWriteRecordProps) &&
                        look_up(library, "CeDeleteRecord", calls.CeDeleteRecord);
  calls.CloseHandle = ::CloseHandle;
  calls.LocalFree = ::LocalFree;
  calls.GetLastError = ::GetLastError;
  calls.GetTickCount = ::GetTickCount;
  calls.Sleep = ::Sleep;
  if (!complete || !add_turns(calls)) return std::nullopt;
  return calls;
}

}  // namespace orvello
