#include <objbase.h>

#include "ports/messages.h"
#include "store/pim/pim_application.h"

namespace orvello {
namespace {

// A library of the platform for as long as it is used.
class LoadedLibrary {
 public:
  explicit LoadedLibrary(const wchar_t* name) : module_(LoadLibraryW(name)) {}
  LoadedLibrary(const LoadedLibrary&) = delete;
  LoadedLibrary& operator=(const LoadedLibrary&) = delete;
  ~LoadedLibrary() {
    if (module_) FreeLibrary(module_);
  }
  explicit operator bool() const { return module_ != nullptr; }
  FARPROC entry(const char* name) const { return GetProcAddress(module_, name); }

 private:
  HMODULE module_;
};

constexpr std::uint32_t kDeliver = 0x81FF;  // the window's own, beside the platform's

using RegisterServer = HRESULT(STDAPICALLTYPE*)();

}  // namespace

// Where a window stands its host has made the thread ready already, for an apartment of its own:
// the objects work there too, and it stays the host's.
bool PimStore::initialize() {
  const HRESULT result = CoInitializeEx(nullptr, 0);
  if (result == RPC_E_CHANGED_MODE) ++hosts_apartments_;
  return SUCCEEDED(result) || result == RPC_E_CHANGED_MODE;
}

void PimStore::uninitialize() {
  caller_.forget_numbers();
  if (hosts_apartments_ > 0)
    --hosts_apartments_;
  else
    CoUninitialize();
}

std::unique_ptr<StoreApplication> PimStore::create_application(bool notify) {
  Ref<IUnknown> made;
  Ref<IDispatch> named;
  const IID& wanted = notify ? kPimSecondApplicationInterface : kPimApplicationInterface;
  if (FAILED(CoCreateInstance(kPimApplicationClass, nullptr, CLSCTX_INPROC_SERVER, wanted,
                              made.out_any())) ||
      FAILED(made->QueryInterface(IID_IDispatch, named.out_any())))
    return nullptr;
  return std::make_unique<PimApplication>(
      *this, notify, PimObject(caller_, PimKind::application, std::move(named)));
}

CalendarStore::Registration PimStore::register_server() {
  const LoadedLibrary library(kPimServer);
  if (!library) return Registration::library_missing;
  const FARPROC entry = library.entry(kPimRegister);
  if (!entry) return Registration::entry_missing;
  // What a library's entry takes and answers, its address does not say.
  const auto call = reinterpret_cast<RegisterServer>(reinterpret_cast<void*>(entry));
  return call() == 0 ? Registration::done : Registration::call_failed;
}

std::intptr_t PimStore::notified_window() {
  if (!window_ && platform_.make_window)
    window_ = platform_.make_window([this](std::uint32_t message) { told(message); });
  return window_ ? window_->handle() : 0;
}

// Of a burst of changes, such as a synchronisation's, the program hears once for each kind.
void PimStore::told(std::uint32_t message) {
  if (message == kDeliver) {
    delivery_posted_ = false;
    poll();
    return;
  }
  const bool remote = message >= kItemCreatedRemote;
  const std::uint32_t first = remote ? kItemCreatedRemote : kItemCreatedLocal;
  if (message < first || message > first + 2) return;
  if (remote) modified_.clear();  // whatever it was that somebody else has changed
  next_state();
  note_change(message == first       ? StoreChange::created
              : message == first + 1 ? StoreChange::deleted
                                     : StoreChange::changed,
              remote);
  if (!delivery_posted_) window_->post(kDeliver);
  delivery_posted_ = true;
}

void PimStore::opened(PimApplication& application) {
  next_state();
  static_cast<void>(uids_.read());  // who needs them asks again, and says why not
  open_.push_back(&application);
}

void PimStore::closed(PimApplication& application) {
  next_state();
  std::erase(open_, &application);
}

}  // namespace orvello
