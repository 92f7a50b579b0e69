// Watches the strings that cross the boundary: those given out, which the caller has to free, and
// those taken, which stay the caller's. The platform's task allocator tells of each block freed.
#pragma once

#include <windows.h>

#include <objidl.h>

#include <cstddef>
#include <unordered_map>

#include "base/text.h"

namespace orvello::test {

class StringWatch : public IMallocSpy {
 public:
  // Begins to watch, for as long as the process lives: its blocks may outlive every test.
  void begin();

  BSTR give(TextView text);
  void take(BSTR text);
  int live() const { return live_; }
  int freed_twice() const { return freed_twice_; }
  void keep_released(bool keep) { keeps_ = keep; }
  void forget();  // what was not freed is no longer missed

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T size) override { return size; }
  void* STDMETHODCALLTYPE PostAlloc(void* block) override;
  void* STDMETHODCALLTYPE PreFree(void* block, BOOL spied) override;
  void STDMETHODCALLTYPE PostFree(BOOL) override {}
  SIZE_T STDMETHODCALLTYPE PreRealloc(void* block, SIZE_T size, void** resized,
                                      BOOL spied) override;
  void* STDMETHODCALLTYPE PostRealloc(void* block, BOOL) override { return block; }
  void* STDMETHODCALLTYPE PreGetSize(void* block, BOOL) override { return block; }
  SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T size, BOOL) override { return size; }
  void* STDMETHODCALLTYPE PreDidAlloc(void* block, BOOL) override { return block; }
  int STDMETHODCALLTYPE PostDidAlloc(void*, BOOL, int did) override { return did; }
  void STDMETHODCALLTYPE PreHeapMinimize() override {}
  void STDMETHODCALLTYPE PostHeapMinimize() override {}

 private:
  enum class State { live, freed };

  bool begun_ = false;
  bool giving_ = false;
  bool clearing_ = false;
  bool keeps_ = true;
  void* given_ = nullptr;
  std::ptrdiff_t offset_ = 0;  // from a block to the string in it
  std::unordered_map<void*, State> blocks_;
  int live_ = 0;
  int freed_twice_ = 0;
};

}  // namespace orvello::test
