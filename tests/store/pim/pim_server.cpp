#include "tests/store/pim/pim_server.h"

#include <objbase.h>

namespace orvello::test {

std::wstring library_folder(const wchar_t* library) {
  wchar_t path[MAX_PATH];
  std::wstring program(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
  return program.substr(0, program.find_last_of(L'\\') + 1) + library;
}

namespace {

StandinControl* loaded_standin = nullptr;

class NothingIsLeft : public testing::EmptyTestEventListener {
  void OnTestEnd(const testing::TestInfo&) override {
    if (!loaded_standin) return;
    EXPECT_EQ(loaded_standin->references(), 0) << loaded_standin->report();
    EXPECT_EQ(loaded_standin->strings(), 0) << loaded_standin->report();
    EXPECT_EQ(loaded_standin->faults(), 0) << loaded_standin->report();
    loaded_standin->reset();
  }
};

[[maybe_unused]] const bool kLooked = [] {
  testing::UnitTest::GetInstance()->listeners().Append(new NothingIsLeft);
  return true;
}();

}  // namespace

StandinControl& standin() {
  if (!loaded_standin)
    loaded_standin = [] {
      const std::wstring folder = library_folder(L"pimstore");
      SetDllDirectoryW(folder.c_str());
      const HMODULE library = LoadLibraryW((folder + L"\\pimstore.dll").c_str());
      const auto function = [&](const char* name) {
        return library ? reinterpret_cast<void*>(GetProcAddress(library, name)) : nullptr;
      };
      const auto enter =
          reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(function("DllRegisterServer"));
      const auto control = reinterpret_cast<StandinControlFunction>(function("standin_control"));
      if (!enter || !control || FAILED(enter())) {
        ADD_FAILURE() << "pimstore.dll does not stand beside the tests";
        std::abort();
      }
      control()->reset();
      return control();
    }();
  return *loaded_standin;
}

}  // namespace orvello::test
